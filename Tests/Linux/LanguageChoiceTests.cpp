#include "Linux/Desktop/Translations/Translations.h"

#include <gtest/gtest.h>

#include <utility>

namespace tessary {
namespace {

TEST(Translations, AreChosenAsTheEnvironmentAsks) {
    using Row = std::pair<const char*, const char*>;
    for (const auto& [environment, language] :
         {Row{"", ""},
          {"LANG=de_AT.UTF-8", "de"},
          {"LANG=de_DE.UTF-8 LC_MESSAGES=fr_CA.UTF-8", "fr"},
          {"LANG=de_DE.UTF-8 LC_MESSAGES=fr_FR.UTF-8 LC_ALL=ja_JP.UTF-8", "ja"},
          {"LANG=C.UTF-8 LANGUAGE=de:en", "de"},
          {"LANG=en_GB.UTF-8 LANGUAGE=en:de", ""}, // no file, and yet the first choice
          {"LANG=C.UTF-8 LANGUAGE=C:de", ""},
          {"LANG=pt_BR.UTF-8 LANGUAGE=pt_BR:xx:es:de", "es"},
          {"LANG=de_DE.UTF-8 LC_ALL=C LANGUAGE=de", ""},
          {"LANG=de_DE.UTF-8 LC_ALL=C.UTF-8", ""},
          {"LANG=zh_CN.UTF-8", "zh_CN"},
          {"LANG=zh_SG.UTF-8", "zh_CN"},
          {"LANG=zh_TW.UTF-8", ""},
          {"LANG=zh_HK.UTF-8 LANGUAGE=zh_HK:zh_TW", ""}}) {
        QProcessEnvironment variables;
        for (const QString& pair : QString::fromLatin1(environment).split(u' ', Qt::SkipEmptyParts))
            variables.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
        EXPECT_EQ(translationFor(variables), QString::fromLatin1(language)) << environment;
    }
}

} // namespace
} // namespace tessary
