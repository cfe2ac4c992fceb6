#include "Linux/BoxView.h"
#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/FormWidget.h"
#include "Linux/Desktop/Views/ViewWidget.h"
#include "Linux/TestApplication.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessary {
namespace {

using namespace Forms;

/// Of two colours (WCAG 2.1).
double contrast(QRgb a, QRgb b) {
    const auto luminance = [](QRgb colour) {
        const auto linear = [](int part) {
            const double c = part / 255.0;
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
               0.0722 * linear(qBlue(colour));
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// What stands out most from the most frequent colour of a picture's part, and how much.
std::pair<QRgb, double> ink(const QImage& image, const QRect& part) {
    std::map<QRgb, int> colours;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            ++colours[image.pixel(x, y)];
    const QRgb background = std::ranges::max_element(colours, {}, [](const auto& entry) {
                                return entry.second;
                            })->first;
    std::pair<QRgb, double> most;
    for (const auto& [colour, count] : colours)
        if (const double found = contrast(colour, background); found > most.second)
            most = {colour, found};
    return most;
}

class FormWidgets : public testing::Test {
protected:
    /// Shows the form that the fields below describe.
    void render() {
        const Label label{symbol, {}, {{Text{"Row 1", Wording::verbatim}}}};
        const Stack content{Axis::horizontal, 8, 0, {{picker("")}, {field()}}};
        const Toggle toggle{{toggleText}, isOn, [this](bool on) { calls += on ? " on" : " off"; }};
        const Button button{
            {"Restore Defaults"}, ControlSize::small, [this] { calls += " reset"; }};
        Form form;
        form.width = width;
        form.sections.push_back(
            {Text{header},
             {{picker("Display")},
              {LabeledContent{{{label}}, {{content}}}},
              {toggle},
              lastRow.empty() ? View{Stack{Axis::horizontal, {}, 0, {{Spacer{}}, {button}}}}
                              : View{LabeledContent{{{Text{lastRow}}}, {{button}}}}},
             {{Text{"Foot", {}, Font::caption, ForegroundStyle::tertiary}}}});
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

    const QLabel& visibleLabel(QStringView text) const {
        for (const QLabel* label : widget_->findChildren<QLabel*>())
            if (label->isVisible() && label->text() == text)
                return *label;
        throw std::invalid_argument("no such label");
    }

    /// The pixels of a widget's part, at scale 2.
    std::pair<QRgb, double> inkIn(QWidget& part, QRect within) {
        constexpr int scale = 2;
        QImage image(widget_->size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        widget_->QWidget::render(&image);
        within.translate(part.mapTo(&*widget_, QPoint()));
        return ink(image, {within.topLeft() * scale, within.size() * scale});
    }
    std::pair<QRgb, double> textOf(QWidget& part) {
        return inkIn(part, part.rect().marginsRemoved({4, 4, 4, 4} /* the outline */));
    }
    std::pair<QRgb, double> outlineOf(QWidget& part) {
        return inkIn(part, {-3, part.height() / 2, 6, 1});
    }

    TestApplication<QApplication> application;
    std::optional<FormWidget> widget_{std::in_place};
    std::vector<std::string> entries{"One", "-", "Two"};
    std::optional<std::size_t> selected = 0;
    std::string header = "Header";
    std::string toggleText = "A & B";
    std::string lastRow;
    std::string symbol = "1.square";
    double width = 400;
    std::vector<std::string> notes;
    bool isEnabled = true;
    bool isOn = false;
    std::string calls;
    std::shared_ptr<BoxView> view;

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

    HostedView field() {
        const auto make = [this] {
            calls += " make";
            return view = std::make_shared<BoxView>();
        };
        return {make, [this](const auto& updated) { calls += updated == view ? " update" : " ?"; }};
    }
};

TEST_F(FormWidgets, ANewerFormChangesTheValuesOfTheSameWidgetsAndCallsNothing) {
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
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(calls, " entry 2") << "over the divider";
    QTest::keyClick(&find<QCheckBox>(), Qt::Key_Space);
    QTest::keyClick(&find<QPushButton>(), Qt::Key_Space);
    EXPECT_EQ(calls, " entry 2 on reset");
    calls.clear();
    const auto monitor =
        NSEvent::addLocalMonitorForEventsMatchingMask(2, [this](const NSEvent& event) {
            calls += event.locationInWindow.x > 0 && event.locationInWindow.y > 0 ? " click" : " ?";
            return NSEvent::Passage::passOn;
        });
    for (QObject* control :
         std::initializer_list<QObject*>{&find<QCheckBox>(), &find<QPushButton>(), &box}) {
        auto* actions = QAccessible::queryAccessibleInterface(control)->actionInterface();
        actions->doAction(actions->actionNames().first());
    }
    QTest::keyClick(box.view(), Qt::Key_Return); // what is chosen already
    NSEvent::removeMonitor(*monitor);
    EXPECT_EQ(calls, " click off click click entry 2");
}

TEST_F(FormWidgets, TheFormIsAsWideAsToldAndAsTallAsItNeeds) {
    show();
    const QSize before = widget_->size();
    EXPECT_EQ(before.width(), 400);
    notes = {QByteArray("word ").repeated(40).toStdString()};
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

TEST_F(FormWidgets, RowsHaveCommonColumnsThatGrowWithTheFont) {
    show();
    for (const int pixels : {12, 27}) {
        QFont font = QApplication::font();
        font.setPixelSize(pixels);
        QApplication::setFont(font);
        const auto frame = [this](QWidget& part) {
            return QRect(part.mapTo(&*widget_, QPoint()), part.size());
        };
        const auto scaled = [&](double points) {
            return qRound(points * std::max(pixels, 13) / 13);
        };
        // The news, the form that is rendered because of it, its layout.
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const int right = frame(find<QComboBox>(0)).right();
            const QRect last = frame(*existingWidget(*view));
            return last.height() == scaled(24) && right == last.right() &&
                   right == frame(find<QPushButton>()).right() &&
                   right == widget_->width() - 1 - scaled(16) - scaled(12) &&
                   last.left() - frame(find<QComboBox>(1)).right() - 1 == scaled(8);
        }));
        const QRect whole = frame(find<QComboBox>(0));
        const QRect box = frame(find<QComboBox>(1));
        const QRect field = frame(*existingWidget(*view));
        EXPECT_EQ(field.size(), QSize(scaled(130), scaled(24)));
        EXPECT_EQ(QPoint(whole.left(), box.height()), QPoint(box.left(), whole.height()));
        EXPECT_EQ(field.height(), box.height());
        const QLabel& row = visibleLabel(u"Row &1");
        const int line = row.fontMetrics().height();
        EXPECT_EQ(row.parentWidget()->findChild<QWidget*>()->size(), QSize(line, line));
    }
}

TEST_F(FormWidgets, LabelsAreBrokenOnlyWhereNothingElseLeavesThemRoom) {
    lastRow = "A label that may be broken";
    show();
    const QLabel& label = visibleLabel(QString::fromStdString(lastRow));
    for (; width > 200 && label.height() < 2 * label.fontMetrics().height(); width -= 2)
        show();
    const auto& button = find<QPushButton>();
    EXPECT_EQ(button.width(), button.minimumSizeHint().width());
    EXPECT_LT(button.width(), button.sizeHint().width());
}

TEST_F(FormWidgets, AnUnknownSymbolIsAnEmptyPlace) {
    symbol = "unknown";
    show();
    EXPECT_FALSE(widget_->grab().isNull());
}

TEST_F(FormWidgets, TextsArePlain) {
    header = "<b>A</b> & {}";
    entries = {"<b>&B</b>"};
    show();
    EXPECT_EQ(find<QLabel>().text(), u"<b>A</b> & {}");
    EXPECT_EQ(find<QLabel>().textFormat(), Qt::PlainText);
    EXPECT_EQ(find<QComboBox>().currentText(), u"<b>&B</b>");
    EXPECT_EQ(find<QCheckBox>().text(), u"&A && B") << "a mnemonic, but not the one in the text";
    EXPECT_EQ(wordsOf(FormattedText{{.text = "Now {}: {}"}, "{} & %1"}), u"Now {} & %1: {}");
}

TEST_F(FormWidgets, TextsCanBeReadAndOutlinesSeenInLightAndInDarkColours) {
    QPalette dark(QColor(0x424245), QColor(0x222020));
    dark.setColor(QPalette::Base, 0x3D3D3D);
    dark.setColor(QPalette::Highlight, 0x12608A);
    notes = {"Note"};
    show();
    widget_->setAttribute(Qt::WA_KeyboardFocusChange);
    for (const QPalette& palette : {QApplication::palette(), dark}) {
        QApplication::setPalette(palette);
        for (int i = 0; i < 2; ++i) // the news, and the form that is rendered because of it
            QApplication::processEvents();
        for (QLabel* label : widget_->findChildren<QLabel*>())
            EXPECT_TRUE(label->isHidden() || textOf(*label).second >= 4.5)
                << label->text().toStdString();
        QWidget& field = *existingWidget(*view);
        for (const NSColor& colour :
             {NSColor::labelColor(), NSColor::systemBlueColor(), NSColor::tertiaryLabelColor()}) {
            view->ink = colour;
            EXPECT_GE(textOf(field).second, 4.5) << static_cast<int>(colour.name);
        }
        for (QWidget* control : std::initializer_list<QWidget*>{
                 &find<QComboBox>(), &find<QCheckBox>(), &find<QPushButton>(), &field}) {
            EXPECT_GE(outlineOf(*control).second, 3) << control->metaObject()->className();
            control->setFocus(Qt::TabFocusReason);
            EXPECT_GE(outlineOf(*control).second, 3) << control->metaObject()->className();
        }
        const QRgb focused = outlineOf(field).first;
        const auto monitor = NSEvent::addLocalMonitorForEventsMatchingMask(
            NSEventMaskFromType(NSEventType::keyDown),
            [](const NSEvent&) { return NSEvent::Passage::passOn; });
        view->ink = view->outline = NSColor::controlAccentColor();
        view->background = view->ink.colorWithAlphaComponent(0.12);
        view->lineWidth = 2;
        EXPECT_GE(textOf(field).second, 4.5) << "while it records";
        EXPECT_GE(outlineOf(field).second, 3) << "while it records";
        EXPECT_GE(contrast(outlineOf(field).first, focused), 1.5) << "the one from the other";
        NSEvent::removeMonitor(*monitor);
        view->background = NSColor::textBackgroundColor();
        view->outline = NSColor::separatorColor();
        view->lineWidth = 1;
    }
}

TEST_F(FormWidgets, SpeakTheUsersLanguageWithAMnemonicForEachControl) {
    header = "General";
    toggleText = "Resolutions"; // in English with the initial of the button
    notes = {"Display"};        // verbatim
    entries = {"One"};
    const std::vector<std::pair<QString, std::string>> rows{
        {QStringLiteral("de"), "Allgemein, &Bildschirm, Row &1, Foot, Display, &Auflösungen, "
                               "&Standardwerte wiederherstellen"},
        {QStringLiteral("ja"),
         "一般, ディスプレイ(&D), Row &1, Foot, Display, 解像度(&R), デフォルトに戻す(&E)"}};
    for (const auto& [language, expected] : rows) {
        QTranslator translator;
        ASSERT_TRUE(translator.load(QStringLiteral(":/translations/tessary_") + language));
        QCoreApplication::installTranslator(&translator);
        show();
        QStringList shown;
        for (const auto* label : widget_->findChildren<QLabel*>())
            if (label->isVisible())
                shown += label->text();
        for (const auto* button : widget_->findChildren<QAbstractButton*>())
            shown += button->text();
        EXPECT_EQ(shown.join(u", ").toStdString(), expected);
    }
    EXPECT_EQ(existingWidget(*view)->cursor().shape(), Qt::PointingHandCursor);
    EXPECT_NE(existingWidget(*view)->toolTip(), u"Not set");
}

} // namespace
} // namespace tessary
