// What the packaging says about updates: share/tessary/updates.conf beside the program's folder, an
// INI file with the group [Updates]. A file that others than root and the user could have put there
// says nothing.
#pragma once

#include <chrono>
#include <string>

namespace tessary {

struct UpdateConfiguration {
    std::string feed;      ///< key Feed: the address of the feed
    std::string publicKey; ///< key PublicKey: of the packages' Ed25519 signatures, in base64
    /// Key Interval: between scheduled checks; held between an hour and a year.
    std::chrono::seconds interval{86'400};
    bool checksAutomatically = false; ///< key AutomaticChecks: until the user chooses

    /// Whether updates are set up.
    bool isComplete() const { return !feed.empty() && !publicKey.empty(); }

    /// The installed one, read once. What is missing or is no number is as above.
    static const UpdateConfiguration& installed();
};

} // namespace tessary
