#include "Linux/Updates/Library/UpdateWindow.h"

#include "Linux/Updates/UpdateText.h"

#include <QCursor>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tessary::updates {

namespace {

constexpr int lineLength = 64; // in characters of average width

QLabel* addLabel(QWidget& page, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    page.layout()->addWidget(label);
    return label;
}

void addHeading(QWidget& page, const QString& text) {
    QLabel* label = addLabel(page, text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
}

/// For sentences such as failures, of which the user may need a part elsewhere.
void addText(QWidget& page, const QString& text) {
    addLabel(page, text)->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void addNotes(QWidget& page, const QString& notes) {
    auto* text = new QPlainTextEdit(notes);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAccessibleName(UpdateText::tr("What is new"));
    page.layout()->addWidget(text);
}

QDialogButtonBox::ButtonRole roleOf(Answer answer) {
    switch (answer) {
    case Answer::accepted:
        return QDialogButtonBox::AcceptRole;
    case Answer::skipped:
        return QDialogButtonBox::DestructiveRole;
    case Answer::dismissed:
        break;
    }
    return QDialogButtonBox::RejectRole;
}

/// Where the window may lie: at first on the screen that the user points at.
QRect areaFor(const QWidget& window) {
    const QScreen* screen =
        window.isVisible() ? window.screen() : QGuiApplication::screenAt(QCursor::pos());
    const QRect area = (screen != nullptr ? screen : window.screen())->availableGeometry();
    return window.isVisible() ? area.marginsRemoved(window.windowHandle()->frameMargins()) : area;
}

/// As much of the place as possible on the screen, and its beginning in any case.
QRect within(const QRect& screen, QRect place) {
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    return place;
}

} // namespace

UpdateWindow::UpdateWindow() {
    setWindowTitle(UpdateText::tr("Tessary Update"));
    new QVBoxLayout(this);
}

void UpdateWindow::showStep(const Step& step, std::function<void(Answer)> answered) {
    answered_ = std::move(answered);
    if (page_ != nullptr) { // later, since one of its buttons may have led here
        page_->hide();      // else what its layout has posted would show it as a window
        page_->setParent(nullptr);
        page_->deleteLater();
    }
    fillPage(step);
    arrange(!step.notes.isEmpty());
    show();
}

void UpdateWindow::fillPage(const Step& step) {
    page_ = new QWidget(this);
    auto* column = new QVBoxLayout(page_);
    column->setContentsMargins({});
    column->setSpacing(2 * column->spacing());
    column->addStrut(lineLength * fontMetrics().averageCharWidth());
    addHeading(*page_, step.heading);
    if (!step.text.isEmpty())
        addText(*page_, step.text);
    if (!step.notes.isEmpty())
        addNotes(*page_, step.notes);
    if (step.length)
        addProgress(step);
    addAnswers(step);
}

void UpdateWindow::addProgress(const Step& step) {
    length_ = *step.length;
    bar_ = new QProgressBar;
    bar_->setTextVisible(false);
    bar_->setRange(0, 0); // it moves, and shows no part
    bar_->setAccessibleName(step.heading);
    bar_->setFocusPolicy(Qt::TabFocus);
    page_->layout()->addWidget(bar_);
    // Not the button: a key that the user meant for the step before would press it.
    bar_->setFocus();
    if (length_ == 0)
        return;
    amount_ = addLabel(*page_, QString());
    setReceived(0);
}

void UpdateWindow::addAnswers(const Step& step) {
    auto* buttons = new QDialogButtonBox;
    page_->layout()->addWidget(buttons);
    for (const auto& [answer, label] : step.answers) {
        auto* button = buttons->addButton(label, roleOf(answer));
        connect(button, &QPushButton::clicked, this,
                [this, answer = answer] { this->answer(answer); });
        button->setAutoDefault(step.defaultAnswer.has_value());
        if (answer != step.defaultAnswer)
            continue;
        button->setDefault(true);
        button->setFocus();
        // For screen readers, which read a window's labels only when it is new.
        button->setAccessibleDescription(step.heading + u'\n' + step.text);
    }
}

void UpdateWindow::arrange(bool isResizable) {
    constexpr QSize largest(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const QRect area = areaFor(*this);
    const QPoint centre = isVisible() ? geometry().center() : area.center();
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    setMinimumSize(0, 0);
    setMaximumSize(largest);
    layout()->addWidget(page_);
    page_->show();
    QRect place({}, layout()->totalSizeHint());
    place.moveCenter(centre);
    setGeometry(within(area, place));
    layout()->setSizeConstraint(isResizable ? QLayout::SetDefaultConstraint
                                            : QLayout::SetFixedSize);
}

// In steps, since a bar counts no further than 2^31.
void UpdateWindow::setReceived(qint64 received) {
    constexpr int steps = 100;
    const double part = static_cast<double>(received) / static_cast<double>(length_);
    bar_->setRange(0, steps);
    bar_->setValue(static_cast<int>(steps * std::clamp(part, 0.0, 1.0)));
    amount_->setText(UpdateText::tr("%1 of %2").arg(textOfSize(received), textOfSize(length_)));
}

void UpdateWindow::answer(Answer answer) {
    if (const auto answered = std::exchange(answered_, nullptr))
        answered(answer);
}

void WindowCloser::operator()(UpdateWindow* window) const {
    window->hide();
    window->deleteLater();
}

} // namespace tessary::updates
