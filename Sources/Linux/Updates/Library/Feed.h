// The feed that announces versions: RSS 2.0, in which each item is one version for one system.
//
//     <rss version="2.0" xmlns:tessary="urn:x-tessary:updates"><channel><item>
//       <tessary:version>1.10</tessary:version>
//       <tessary:minimumSystem>debian 12</tessary:minimumSystem>
//       <description>What is new, as plain text.</description>
//       <enclosure url="https://…/tessary_1.10_amd64.deb" length="1234567"
//                  type="application/vnd.debian.binary-package" tessary:signature="base64"/>
//     </item></channel></rss>
//
// The minimum system is the operating system's ID and its least VERSION_ID, as os-release(5) has
// them; an item without one is for every system.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QVersionNumber>

#include <optional>
#include <vector>

namespace tessary::updates {

/// "1.10" is above "1.9", and "1.0" is "1". Nothing when the text is not whole numbers with dots
/// between them, or longer than 40 characters.
std::optional<QVersionNumber> versionFromText(const QString& text);

/// An operating system: as in "debian" and 12.
struct System {
    QString name;
    std::optional<QVersionNumber> version; ///< none: newer than all, for a system without releases

    /// The one that runs.
    static System current();
};

/// A version that the feed announces.
struct UpdateItem {
    QString versionText; ///< as it stands in the feed
    QVersionNumber version;
    std::optional<System> minimumSystem;
    QString notes; ///< plain text; the end of a very long one is missing
    QUrl package;
    qint64 length = 0;    ///< of the package, in bytes; above 0
    QByteArray signature; ///< 64 bytes
};

/// The items of a feed that are complete and make sense; others are passed over. Nothing when it
/// is no well-formed feed, when it has a document type (which only attacks have), and when none of
/// its items can be used though it has some.
std::optional<std::vector<UpdateItem>> itemsOf(const QByteArray& feed);

/// The newest item that runs on `system`, if it is above `running`.
std::optional<UpdateItem> newestAbove(const QVersionNumber& running, const System& system,
                                      const std::vector<UpdateItem>& items);

} // namespace tessary::updates
