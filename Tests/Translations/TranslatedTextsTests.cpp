// The texts that the program shows, and what there is of them in other languages.
#include "Simulated/Windows.h"
#include "TSY/PreferencesWindowController.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>
#include <QXmlStreamReader>

using namespace simulated;

namespace {

using Texts = std::set<std::string>;

Texts shownTexts() {
    Texts texts;
    reset(); // the keys at first are function keys, which brings the note
    const auto preferences = tsy::PreferencesWindowController::make();
    const simulated::Display main{.id = 1, .isMain = true};
    for (const auto& displays : {std::vector<simulated::Display>{}, {main, {.id = 2}}}) {
        state.displays = displays;
        preferences->show();
        Texts shown;
        shownForm(&shown);
        texts.merge(shown);
    }
    return texts;
}

/// The texts of a part of the program that a file has translations of, or places for them.
Texts textsIn(const QString& file, QStringView part) {
    Texts texts;
    QFile source(file);
    EXPECT_TRUE(source.open(QIODevice::ReadOnly)) << file.toStdString();
    QXmlStreamReader reader(&source);
    QString context;
    while (!reader.atEnd()) {
        if (!reader.readNextStartElement())
            continue;
        if (reader.name() == u"name")
            context = reader.readElementText();
        else if (reader.name() == u"source" && context == part)
            texts.insert(reader.readElementText().toStdString());
    }
    return texts;
}

/// Those that stand in the sources of the update framework.
Texts updateTexts() {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("texts.ts"));
    QProcess::execute(QStringLiteral(LUPDATE),
                      {QStringLiteral("-silent"), QStringLiteral(SOURCES "/Linux/Updates"),
                       QStringLiteral("-I" SOURCES), QStringLiteral("-ts"), file});
    return textsIn(file, u"updates");
}

TEST(Translations, HaveEveryTextThatIsShownAndNoOther) {
    const std::pair<const char*, Texts> parts[]{{"tessary", shownTexts()},
                                                {"updates", updateTexts()}};
    ASSERT_TRUE(parts[0].second.contains("Currently {}.") && parts[0].second.contains("Not set"));
    ASSERT_TRUE(parts[1].second.contains("&Try Again"));
    const QDir folder(QStringLiteral(":/translations"));
    EXPECT_EQ(folder.entryList().join(u' '),
              u"tessary_de.qm tessary_es.qm tessary_fr.qm tessary_ja.qm tessary_zh_CN.qm");
    for (const QString& file : folder.entryList()) {
        const QString source = QStringLiteral(TRANSLATIONS "/%1ts").arg(file.chopped(2));
        QTranslator translator;
        ASSERT_TRUE(translator.load(folder.filePath(file)));
        for (const auto& [part, shown] : parts) {
            EXPECT_EQ(textsIn(source, QString::fromLatin1(part)), shown) << file.toStdString();
            for (const std::string& text : shown) {
                const QString words = translator.translate(part, text.c_str());
                EXPECT_FALSE(words.isEmpty()) << file.toStdString() << ' ' << text;
                for (const char* kept : {"{}", "Tessary", "&", "%1", "%2"})
                    EXPECT_EQ(words.contains(QString::fromLatin1(kept)),
                              text.find(kept) != text.npos)
                        << words.toStdString();
            }
        }
    }
}

} // namespace
