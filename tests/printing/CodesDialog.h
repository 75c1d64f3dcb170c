#pragma once

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/printing/PrnCode_fm.h>

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <functional>

/// The notations, in the order of their buttons.
enum : int { decimal, hexadecimal, character };

/// The codes dialog that is open, by what a user sees of it.
struct CodesDialog
{
    Zelmar01::TfmPrnCode &Window;

    template<class Widget = QWidget>
    Widget &Find(const char *name) const
    {
        auto *const widget = Window.findChild<Widget *>(QString::fromUtf8(name));
        if (!widget)
            throw std::runtime_error(std::string("there is no ") + name);
        return *widget;
    }
    QLineEdit &Box(const char *code) const { return Find<QLineEdit>((std::string(code) + "Edit").c_str()); }
    QComboBox &Types() const { return Find<QComboBox>("PrinterCombo"); }
    QAbstractButton &Notation(int index) const
    {
        return *Find("RgNotation").findChildren<QRadioButton *>()[index];
    }
    int NotationInForce() const
    {
        int index = 0;
        while (!Notation(index).isChecked())
            ++index;
        return index;
    }

    void Click(QWidget &widget) const
    {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, {widget.height() / 2, widget.height() / 2});
    }
    void Click(const char *name) const { Click(Find(name)); }

    /// Types a text in the place of what a box holds.
    void Type(const char *code, const QString &text) const
    {
        auto &box = Box(code);
        Click(box);
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
    /// Lets pass what waits for the event loop.
    void Settle() const { QTest::qWait(1); }
    /// What a window manager does once a popup or message box is gone; the offscreen platform has none.
    void Activate() const
    {
        Window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
    }
};

class CodesDialogTest : public testing::Test
{
protected:
    CodesDialogTest()
    {
        Zelmar01::SetExceptionDisplay(
            [this](const std::exception &error) { m_told << QString::fromUtf8(error.what()); });
    }
    ~CodesDialogTest() override { Zelmar01::SetExceptionDisplay({}); }

    /// Runs what opens the dialog, with a user who does `work` and then cancels unless it is closed.
    static bool use(const std::function<void(CodesDialog)> &work, const std::function<bool()> &open)
    {
        bool cameUp = false;
        QTimer::singleShot(0, qApp, [&] {
            auto *const window = qobject_cast<Zelmar01::TfmPrnCode *>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            cameUp = QTest::qWaitForWindowActive(window);
            const QPointer<QWidget> stillThere(window);
            EXPECT_NO_THROW(work({*window}));
            if (stillThere && window->isVisible())
                window->reject();
        });
        const bool result = open();
        EXPECT_TRUE(cameUp);
        return result;
    }
    bool execute(Zelmar01::TPrinterType type, const std::function<void(CodesDialog)> &work,
                 const Zelmar01::TCodeSending &send = {})
    {
        const bool confirmed =
            use(work, [&] { return (new Zelmar01::TfmPrnCode(nullptr, send))->Execute(m_codes, type); });
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return confirmed;
    }

    /// What the user was told since the last call.
    QStringList told()
    {
        QTest::qWait(1);
        return std::exchange(m_told, {});
    }

    Zelmar01::TPrinterCodes m_codes = Zelmar01::DefaultPrinterCodes();
    QStringList m_told;
};
