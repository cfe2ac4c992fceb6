// What makes a package ours. Tessary's release tools sign, with Ed25519 (RFC 8032), this one line
// about a package, so that a signature holds for one version only and no old package can be offered
// as a new one:
//
//     tessary 1.10 1234567 <SHA-512 of the package, 128 lower-case hexadecimal digits>\n
//
// The version is written as in the feed, the length is in bytes.
#pragma once

#include "Linux/Updates/Library/Feed.h"

#include <QByteArray>
#include <QFile>

namespace tessary::updates {

/// Whether the whole of `package`, which is open for reading, is what `item` announces and was
/// signed with the private key to `publicKey` (32 bytes). False also when it cannot be
/// read and for a key of another length.
bool isGenuine(QFile& package, const UpdateItem& item, const QByteArray& publicKey);

} // namespace tessary::updates
