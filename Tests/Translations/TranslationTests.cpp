// The texts that the preferences show, and what there is of them in other languages.
#include "Simulated/Windows.h"
#include "TSY/PreferencesWindowController.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTranslator>
#include <QXmlStreamReader>

#include <set>
#include <string>

using namespace simulated;

namespace {

using Texts = std::set<std::string>;

void add(Texts& texts, const Forms::Text& text) {
    if (text.wording == Forms::Wording::localized)
        texts.insert(text.text);
}

/// The texts of a view itself, not of those in it.
struct TextsOf {
    Texts& texts;

    void operator()(const Forms::Text& text) const { add(texts, text); }
    void operator()(const Forms::FormattedText& text) const { add(texts, text.text); }
    void operator()(const Forms::Toggle& toggle) const { add(texts, toggle.label); }
    void operator()(const Forms::Button& button) const { add(texts, button.title); }
    void operator()(const Forms::Picker& picker) const {
        add(texts, picker.label);
        for (const auto& entry : picker.entries)
            add(texts, entry.text);
    }
    void operator()(const auto& /*container*/) const {}
};

Texts shownTexts() {
    Texts texts;
    reset(); // the keys at first are function keys, which brings the note
    const auto preferences = tsy::PreferencesWindowController::make();
    const simulated::Display main{.id = 1, .isMain = true};
    for (const auto& displays : {std::vector<simulated::Display>{}, {main, {.id = 2}}}) {
        state.displays = displays;
        preferences->show();
        const auto form = state.window.lock()->contentViewController()->form();
        for (const auto& section : form.sections)
            add(texts, section.header.value_or(Forms::Text{"", Forms::Wording::verbatim}));
        for (const auto& [row, view] : viewsOf(form))
            std::visit(TextsOf{texts}, view->content);
    }
    return texts;
}

/// The texts that the file of a language has translations of.
Texts textsIn(const QString& file) {
    Texts texts;
    QFile source(QStringLiteral(TRANSLATIONS) + u'/' + file);
    EXPECT_TRUE(source.open(QIODevice::ReadOnly)) << source.fileName().toStdString();
    QXmlStreamReader reader(&source);
    while (!reader.atEnd())
        if (reader.readNextStartElement() && reader.name() == u"source")
            texts.insert(reader.readElementText().toStdString());
    return texts;
}

TEST(Translations, HaveEveryTextThatThePreferencesShowAndNoOther) {
    const Texts shown = shownTexts();
    ASSERT_TRUE(shown.contains("Currently {}.") && shown.contains("Not set"));
    const QDir folder(QStringLiteral(":/translations"));
    EXPECT_EQ(folder.entryList().join(u' '),
              u"tessary_de.qm tessary_es.qm tessary_fr.qm tessary_ja.qm tessary_zh_CN.qm");
    for (const QString& file : folder.entryList()) {
        EXPECT_EQ(textsIn(file.chopped(2) + QStringLiteral("ts")), shown) << file.toStdString();
        QTranslator translator;
        ASSERT_TRUE(translator.load(folder.filePath(file)));
        for (const std::string& text : shown) {
            const QString words = translator.translate("tessary", text.c_str());
            EXPECT_FALSE(words.isEmpty()) << file.toStdString() << ' ' << text;
            for (const char* kept : {"{}", "Tessary"})
                EXPECT_EQ(words.contains(QString::fromLatin1(kept)), text.find(kept) != text.npos)
                    << words.toStdString();
        }
    }
}

} // namespace
