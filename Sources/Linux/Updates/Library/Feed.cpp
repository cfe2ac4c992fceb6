#include "Linux/Updates/Library/Feed.h"

#include <QSysInfo>
#include <QXmlStreamReader>

#include <algorithm>

namespace tessary::updates {

namespace {

constexpr QStringView ownNamespace = u"urn:x-tessary:updates";
constexpr qsizetype signatureLength = 64;
constexpr qsizetype mostLetters =
    20'000;                          // of notes: a text of millions would take minutes to lay out
constexpr qsizetype mostDigits = 40; // of a version, which also becomes a file's name

/// The conversions of QString also take signs and blanks.
bool isDigits(QStringView text) {
    return !text.isEmpty() &&
           std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

std::optional<System> systemFromText(const QString& text) {
    const auto words = text.simplified().split(u' ');
    const auto version = words.size() == 2 ? versionFromText(words[1]) : std::nullopt;
    if (!version)
        return std::nullopt;
    return System{.name = words[0], .version = version};
}

/// Steps through a feed.
class Reader {
public:
    explicit Reader(const QByteArray& feed) : xml_(feed) {}

    std::optional<std::vector<UpdateItem>> read() {
        bool hasChannel = false;
        if (!nextElement() || !isAt(u"rss"))
            return std::nullopt;
        while (nextElement())
            if (isAt(u"channel")) {
                hasChannel = true;
                readChannel();
            } else {
                xml_.skipCurrentElement();
            }
        while (!xml_.atEnd()) // what is behind the root must be well-formed, too
            xml_.readNext();
        if (xml_.hasError() || !hasChannel || (items_.empty() && hasItems_))
            return std::nullopt;
        return items_;
    }

private:
    /// Like readNextStartElement, for which a document type is nothing special.
    bool nextElement() {
        while (xml_.readNext() != QXmlStreamReader::Invalid) {
            if (xml_.isDTD())
                xml_.raiseError(QStringLiteral("a document type"));
            if (xml_.isStartElement() || xml_.isEndElement())
                return xml_.isStartElement();
        }
        return false;
    }

    bool isAt(QStringView name, QStringView nameSpace = {}) const {
        return xml_.name() == name && xml_.namespaceUri() == nameSpace;
    }

    QString text() { return xml_.readElementText(QXmlStreamReader::SkipChildElements); }

    void readChannel() {
        while (nextElement())
            if (isAt(u"item"))
                readItem();
            else
                xml_.skipCurrentElement();
    }

    void readItem() {
        UpdateItem item;
        bool isUsable = true;
        while (nextElement())
            isUsable = readDetail(item) && isUsable;
        hasItems_ = true;
        if (isUsable && !item.versionText.isEmpty() && !item.package.isEmpty())
            items_.push_back(std::move(item));
    }

    /// False when it makes no sense.
    bool readDetail(UpdateItem& item) {
        if (isAt(u"enclosure"))
            return readEnclosure(item);
        if (isAt(u"version", ownNamespace)) {
            item.versionText = text();
            const auto version = versionFromText(item.versionText);
            item.version = version.value_or(QVersionNumber());
            return version.has_value();
        }
        if (isAt(u"minimumSystem", ownNamespace)) {
            item.minimumSystem = systemFromText(text());
            return item.minimumSystem.has_value();
        }
        if (isAt(u"description"))
            item.notes = text().trimmed().left(mostLetters);
        else
            xml_.skipCurrentElement();
        return true;
    }

    bool readEnclosure(UpdateItem& item) {
        const auto attributes = xml_.attributes();
        xml_.skipCurrentElement();
        const auto length = attributes.value(QLatin1String("length"));
        const auto signature = QByteArray::fromBase64Encoding(
            attributes.value(ownNamespace.toString(), QStringLiteral("signature")).toUtf8(),
            QByteArray::AbortOnBase64DecodingErrors);
        item.package =
            QUrl(attributes.value(QLatin1String("url")).toString().trimmed(), QUrl::StrictMode);
        item.length = isDigits(length) ? length.toLongLong() : 0; // 0 when it is too large, too
        item.signature = signature ? *signature : QByteArray();
        return item.length > 0 && item.signature.size() == signatureLength &&
               item.package.isValid() && !item.package.isRelative();
    }

    QXmlStreamReader xml_;
    std::vector<UpdateItem> items_;
    bool hasItems_ = false;
};

bool runsOn(const System& system, const UpdateItem& item) {
    if (!item.minimumSystem)
        return true;
    return system.name == item.minimumSystem->name &&
           (!system.version || *system.version >= *item.minimumSystem->version);
}

} // namespace

std::optional<QVersionNumber> versionFromText(const QString& text) {
    if (text.size() > mostDigits)
        return std::nullopt;
    QVector<int> segments;
    for (const auto& digits : QStringView(text).split(u'.')) {
        bool isNumber = false;
        segments.push_back(digits.toInt(&isNumber));
        if (!isNumber || !isDigits(digits))
            return std::nullopt;
    }
    return QVersionNumber(segments).normalized();
}

System System::current() {
    return {.name = QSysInfo::productType(),
            .version = versionFromText(QSysInfo::productVersion())};
}

std::optional<std::vector<UpdateItem>> itemsOf(const QByteArray& feed) {
    return Reader(feed).read();
}

std::optional<UpdateItem> newestAbove(const QVersionNumber& running, const System& system,
                                      const std::vector<UpdateItem>& items) {
    const UpdateItem* newest = nullptr;
    for (const auto& item : items)
        if (runsOn(system, item) && item.version > (newest ? newest->version : running))
            newest = &item;
    return newest ? std::optional(*newest) : std::nullopt;
}

} // namespace tessary::updates
