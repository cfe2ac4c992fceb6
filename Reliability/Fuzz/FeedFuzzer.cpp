// Any bytes as a feed of new versions.
#include "Finding.h"

#include "Linux/Updates/Library/Feed.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using namespace tessary::updates;

constexpr qsizetype signatureLength = 64;

void holdItem(const UpdateItem& item) {
    constexpr qsizetype mostLetters = 20'000;
    fuzz::hold(item.length > 0, "a package has a length");
    fuzz::hold(item.signature.size() == signatureLength, "a package has a whole signature");
    fuzz::hold(item.package.isValid() && !item.package.isRelative(), "a package has an address");
    fuzz::hold(item.notes.size() <= mostLetters, "notes are no longer than can be shown");
    fuzz::hold(versionFromText(item.versionText) == item.version, "a version is its text");
    fuzz::hold(!item.versionText.contains(u'/'), "a version can stand in a file's name");
}

void holdChoice(const std::vector<UpdateItem>& items, const System& system) {
    const QVersionNumber running(1, 9);
    const auto newest = newestAbove(running, system, items);
    if (!newest)
        return;
    fuzz::hold(newest->version > running, "what is offered is newer than what runs");
    fuzz::hold(
        std::ranges::any_of(
            items, [&](const auto& item) { return item.versionText == newest->versionText; }),
        "what is offered stands in the feed");
    fuzz::hold(!newest->minimumSystem || newest->minimumSystem->name == system.name,
               "what is offered is for this system");
}

QByteArray itemSignedBy(const QByteArray& signature) {
    return "<item><t:version>1." + QByteArray::number(signature.size()) +
           "</t:version><enclosure url=\"https://example.org/p.deb\" length=\"7\" t:signature=\"" +
           signature.toBase64() + "\"/></item>";
}

/// Random bytes nearly never become a signature that is just too long or too short.
void holdSignatures(const QByteArray& bytes) {
    QByteArray feed = "<rss xmlns:t=\"urn:x-tessary:updates\"><channel>";
    for (const auto length : {signatureLength - 1, signatureLength, signatureLength + 1})
        feed += itemSignedBy(bytes.leftJustified(length, ' ', true));
    const auto items = itemsOf(feed + "</channel></rss>");
    fuzz::hold(items && items->size() == 1, "the item with a whole signature is kept, no other");
    fuzz::hold(items->front().signature == bytes.leftJustified(signatureLength, ' ', true),
               "a signature is kept as it is");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const QByteArray feed(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    holdSignatures(feed);
    const auto items = itemsOf(feed);
    if (!items)
        return 0;
    for (const UpdateItem& item : *items)
        holdItem(item);
    holdChoice(*items, {QStringLiteral("debian"), QVersionNumber(12)});
    holdChoice(*items, {QStringLiteral("debian"), std::nullopt});
    return 0;
}
