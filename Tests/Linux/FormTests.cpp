#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/FormWidget.h"
#include "Linux/Desktop/Views/ViewWidget.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include <array>
#include <string>
#include <vector>

namespace tessary {
namespace {

using namespace Forms;

struct Canvas : NSView {
    Canvas() : NSView(CGRect{}) {}

    CGSize intrinsicContentSize() const override { return {130, 24}; }
    void draw(CGRect /*dirtyRect*/) override {}
};

class FormWidgets : public testing::Test {
protected:
    FormWidgets() : application_(makeApplication()) { widget_.emplace(); }

    /// Shows the form that the fields below describe.
    void render() {
        const Label label{"1.square", {}, {{Text{"Row"}}}};
        const Stack content{Axis::horizontal, {}, 0, {{picker("")}, {canvas()}}};
        const Toggle toggle{{"A & B"}, isOn, [this](bool on) { calls += on ? " on" : " off"; }};
        const Button button{{"Reset"}, ControlSize::small, [this] { calls += " reset"; }};
        Form form;
        form.width = 400;
        form.sections.push_back({Text{header},
                                 {{picker("Display")},
                                  {LabeledContent{{{label}}, {{content}}}},
                                  {toggle},
                                  {Stack{Axis::horizontal, {}, 0, {{Spacer{}}, {button}}}}},
                                 {}});
        for (const std::string& note : notes)
            form.sections.push_back(
                {{},
                 {{Text{note, Wording::verbatim, Font::caption, ForegroundStyle::secondary}}},
                 {}});
        widget_->render(form);
    }

    void show() {
        render();
        widget_->show();
        widget_->activateWindow();
        QApplication::processEvents();
        calls.clear();
    }

    template <typename Kind>
    Kind& find(int number = 0) {
        return *widget_->findChildren<Kind*>().at(number);
    }

    std::vector<std::string> entries{"One", "-", "Two"};
    std::optional<std::size_t> selected = 0;
    std::string header = "Header";
    std::vector<std::string> notes;
    bool isEnabled = true;
    bool isOn = false;
    std::string calls;
    std::shared_ptr<NSView> view;

private:
    Picker picker(const std::string& label) {
        Picker picker;
        picker.label.text = label;
        picker.isLabelHidden = label.empty();
        picker.isEnabled = isEnabled;
        for (const std::string& entry : entries)
            picker.entries.push_back({{entry, Wording::verbatim}, entry == "-"});
        picker.selected = selected;
        picker.select = [this](std::size_t entry) { calls += " entry " + std::to_string(entry); };
        return picker;
    }

    HostedView canvas() {
        return {[this] {
                    calls += " make";
                    return std::make_shared<Canvas>();
                },
                [this](const std::shared_ptr<NSView>& updated) {
                    calls += " update";
                    view = updated;
                }};
    }

    static std::unique_ptr<QApplication> makeApplication() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        static char name[] = "test";
        static std::array<char*, 2> arguments{name, nullptr};
        return std::make_unique<QApplication>(count, arguments.data());
    }

    std::unique_ptr<QApplication> application_;

protected:
    std::optional<FormWidget> widget_; ///< does not outlive the application
};

TEST_F(FormWidgets, ANewerFormChangesTheValuesOfTheSameWidgetsAndCallsNobody) {
    show();
    const auto before = widget_->findChildren<QWidget*>();
    header = "Other";
    selected = 2;
    isOn = true;
    isEnabled = false;
    render();
    EXPECT_EQ(widget_->findChildren<QWidget*>(), before);
    EXPECT_EQ(find<QLabel>().text(), u"Other");
    EXPECT_EQ(find<QComboBox>().currentText(), u"Two");
    EXPECT_FALSE(find<QComboBox>().isEnabled());
    EXPECT_TRUE(find<QCheckBox>().isChecked());
    selected.reset();
    render();
    EXPECT_EQ(find<QComboBox>().currentIndex(), -1);
    EXPECT_EQ(calls, " update update") << "the view is made once";
}

TEST_F(FormWidgets, FocusAndAnOpenListSurviveANewerForm) {
    show();
    auto& box = find<QComboBox>();
    box.setFocus();
    box.showPopup();
    entries = {"One", "Two", "-", "Three", "Four"};
    render();
    QApplication::processEvents();
    EXPECT_TRUE(box.view()->isVisible());
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts += box.model()->flags(box.model()->index(i, 0)).testFlag(Qt::ItemIsSelectable)
                     ? box.itemText(i)
                     : QStringLiteral("-");
    EXPECT_EQ(texts.join(u' '), u"One Two - Three Four") << "a divider cannot be chosen";
    box.hidePopup();
    EXPECT_EQ(QApplication::focusWidget(), &box);
}

TEST_F(FormWidgets, WhatTheUserDoesIsToldOnce) {
    show();
    auto& box = find<QComboBox>();
    const auto press = [](QWidget& widget, Qt::Key key) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QApplication::sendEvent(&widget, &event);
        }
    };
    press(box, Qt::Key_Down);
    EXPECT_EQ(calls, " entry 2") << "over the divider";
    press(find<QCheckBox>(), Qt::Key_Space);
    press(find<QPushButton>(), Qt::Key_Space);
    EXPECT_EQ(calls, " entry 2 on reset");
}

TEST_F(FormWidgets, TheFormIsAsWideAsToldAndAsTallAsItNeeds) {
    show();
    const QSize before = widget_->size();
    EXPECT_EQ(before.width(), 400);
    std::string words;
    for (int i = 0; i < 40; ++i)
        words += "word ";
    notes = {words};
    render();
    QApplication::processEvents();
    auto& note = *widget_->findChildren<QLabel*>().last();
    EXPECT_GE(note.height(), 3 * note.fontMetrics().height()) << "in several lines";
    EXPECT_GE(note.height(), note.heightForWidth(note.width()));
    EXPECT_TRUE(widget_->rect().contains(
        QRect(note.mapTo(&*widget_, QPoint()), note.size()).marginsAdded({8, 8, 8, 8})));
    EXPECT_EQ(widget_->width(), 400);
    notes.clear();
    render();
    EXPECT_EQ(widget_->size(), before) << "at once";
}

TEST_F(FormWidgets, TextsArePlain) {
    header = "<b>A</b> & {}";
    entries = {"<b>&B</b>"};
    show();
    EXPECT_EQ(find<QLabel>().text(), u"<b>A</b> & {}");
    EXPECT_EQ(find<QLabel>().textFormat(), Qt::PlainText);
    EXPECT_EQ(find<QComboBox>().currentText(), u"<b>&B</b>");
    EXPECT_EQ(find<QCheckBox>().text(), u"A && B") << "would be a mnemonic";
    EXPECT_EQ(wordsOf(FormattedText{{.text = "Now {}: {}"}, "{} & %1"}), u"Now {} & %1: {}");
}

TEST_F(FormWidgets, ShadesAndSizesOfTextsFollowTheDesktops) {
    notes = {"Note"};
    show();
    auto& note = *widget_->findChildren<QLabel*>().last();
    QFont font = QApplication::font();
    font.setPointSizeF(20);
    QApplication::setFont(font);
    QApplication::setPalette(QPalette(Qt::darkBlue));
    for (int i = 0; i < 2; ++i) // the news, and the form that is rendered because of it
        QApplication::processEvents();
    EXPECT_DOUBLE_EQ(note.font().pointSizeF(), 17);
    QColor shade = QApplication::palette().color(QPalette::WindowText);
    EXPECT_GT(shade.lightness(), 128) << "on dark blue";
    shade.setAlphaF(0.7F);
    EXPECT_EQ(note.palette().color(QPalette::WindowText), shade);
}

TEST_F(FormWidgets, EveryControlHasANameAndIsReachedByTab) {
    show();
    const auto nameOf = [](QWidget* widget) {
        auto* accessible = QAccessible::queryAccessibleInterface(widget);
        const auto labels = accessible->relations(QAccessible::Label);
        return (labels.isEmpty() ? accessible : labels[0].first)->text(QAccessible::Name);
    };
    QStringList names;
    QWidget* control = &find<QComboBox>();
    do {
        names += nameOf(control);
        control->setFocus();
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(control, &tab);
        control = QApplication::focusWidget();
    } while (control != &find<QComboBox>());
    EXPECT_EQ(names.join(u", "), u"Display, Row, A & B, Reset");
    EXPECT_EQ(nameOf(existingWidget(*view)), u"Row");
}

} // namespace
} // namespace tessary
