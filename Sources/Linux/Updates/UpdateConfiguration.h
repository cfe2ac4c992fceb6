// What the packaging says about updates: share/tessary/updates.conf beside the program's folder, an
// INI file with the group [Updates].
#pragma once

#include <chrono>
#include <string>

namespace tessary {

struct UpdateConfiguration {
    std::string feed;      ///< key Feed: the address of the appcast
    std::string publicKey; ///< key PublicKey: of the packages' Ed25519 signatures, in base64
    std::chrono::seconds interval{
        86'400};                      ///< key Interval: between scheduled checks; at least 3600
    bool checksAutomatically = false; ///< key AutomaticChecks: until the user chooses

    /// Whether updates are set up.
    bool isComplete() const { return !feed.empty() && !publicKey.empty(); }

    /// The installed one, read once. What is missing or makes no sense there is as above.
    static const UpdateConfiguration& installed();
};

} // namespace tessary
