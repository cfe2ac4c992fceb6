#include "Linux/Desktop/Translations/Translations.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>
#include <QTranslator>

#include <memory>

namespace tessary {

namespace {

const QString folder = QStringLiteral(":/translations");
const QString prefix = QStringLiteral("tessary_");

/// The user's languages, the preferred one first, by the rules of gettext: LANGUAGE only refines
/// what the locale says, and nothing refines the plain C locale.
QStringList languagesIn(const QProcessEnvironment& environment) {
    QString locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale.isEmpty())
            locale = environment.value(QString::fromLatin1(name));
    if (locale.isEmpty() || locale == u"C" || locale == u"POSIX")
        return {};
    const QString languages = environment.value(QStringLiteral("LANGUAGE"));
    return (languages.isEmpty() ? locale : languages).split(u':', Qt::SkipEmptyParts);
}

/// The languages that there are translations into.
QStringList translations() {
    QStringList languages;
    for (const QString& file : QDir(folder).entryList())
        languages += QFileInfo(file).completeBaseName().mid(prefix.size());
    return languages;
}

/// Territories do not count, but scripts do: Chinese in Taiwan is another one to read.
bool areTheSame(const QLocale& language, const QLocale& other) {
    return language.language() == other.language() && language.script() == other.script();
}

} // namespace

// QTranslator's own choice would pass over English, for which there is no file, to the next.
QString translationFor(const QProcessEnvironment& environment) {
    for (const QString& name : languagesIn(environment)) {
        const QLocale wanted(name);
        if (wanted.language() == QLocale::English || name == u"C")
            break;
        for (const QString& language : translations())
            if (areTheSame(QLocale(language), wanted))
                return language;
    }
    return {};
}

void installTranslation(QCoreApplication& application) {
    const QString language = translationFor(QProcessEnvironment::systemEnvironment());
    if (language.isEmpty())
        return;
    auto translator = std::make_unique<QTranslator>(&application);
    if (translator->load(prefix + language, folder))
        QCoreApplication::installTranslator(translator.release()); // the application owns it
}

} // namespace tessary
