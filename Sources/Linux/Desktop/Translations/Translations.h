// The texts of the program in other languages than English. They are part of the program.
#pragma once

#include <QCoreApplication>
#include <QProcessEnvironment>
#include <QString>

namespace tessary {

/// The language in which the environment asks for messages, of those that there are translations
/// for, as in "de" or "zh_CN". Empty for English, which is also what is left when there is none.
QString translationFor(const QProcessEnvironment& environment);

/// Translates texts into the user's language, as long as the application lives.
void installTranslation(QCoreApplication& application);

} // namespace tessary
