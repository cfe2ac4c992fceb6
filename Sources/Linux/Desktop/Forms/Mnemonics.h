#pragma once

#include "Platform/AppKit/Forms.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QWidget>

#include <optional>

namespace tessary {

/// The letters that lead to the controls of a form when they are pressed with Alt, each to one.
/// They are found in the words that the user reads, whatever the language.
class Mnemonics {
public:
    Mnemonics() = default;
    explicit Mnemonics(const Forms::Form& form);

    /// `words` for a widget that takes "&" as the mark of a mnemonic, which only the words of a
    /// control have.
    QString marked(const QString& words) const;

private:
    void add(const QString& words, const QString& english);
    std::optional<qsizetype> takeLetter(const QString& text);

    QHash<QString, QString> marked_; ///< by the words
    QSet<QChar> taken_;
};

/// The same, by the mnemonics of the form that `widget` is in.
QString withMnemonic(const QWidget& widget, const QString& words);

/// `words` without any, for a widget that takes "&" as the mark of a mnemonic.
QString withoutMnemonic(QString words);

} // namespace tessary
