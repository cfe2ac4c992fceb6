// The window of an update. It asks in plain text, and the program's own windows can be used
// meanwhile.
#pragma once

#include "Linux/Updates/Library/Step.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>

#include <functional>
#include <memory>

namespace tessary::updates {

class UpdateWindow : public QDialog {
public:
    UpdateWindow();

    /// Shows a step in place of the one before. The window's centre stays where it is, within the
    /// screen. `answered` is called with the first answer, and not when another step comes before
    /// that; it may show another step and destroy the window by its handle.
    void showStep(const Step& step, std::function<void(Answer)> answered);

    /// So many bytes of the step's length are there.
    void setReceived(qint64 received);

    /// Escape, and the close button of the window's frame.
    void reject() override { answer(Answer::dismissed); }

private:
    void answer(Answer answer);
    void fillPage(const Step& step);
    void addProgress(const Step& step);
    void addAnswers(const Step& step);
    void arrange(bool isResizable);

    std::function<void(Answer)> answered_;
    QWidget* page_ = nullptr; ///< what the step shows
    QProgressBar* bar_ = nullptr;
    QLabel* amount_ = nullptr;
    qint64 length_ = 0;
};

/// Takes a window from the screen at once, and ends it when the event that has led to that is over,
/// since it may be the window's own.
struct WindowCloser {
    void operator()(UpdateWindow* window) const;
};

using WindowHandle = std::unique_ptr<UpdateWindow, WindowCloser>;

} // namespace tessary::updates
