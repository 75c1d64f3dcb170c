#include "CodesDialog.h"

#include <Zelmar01/core/WidgetBoxes.h>

#include <QMessageBox>
#include <QWheelEvent>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

struct TWay
{
    const char *Name;
    std::function<void(CodesDialog)> Go;
};

void clickSlowly(CodesDialog dialog, QWidget &widget)
{
    QTest::mousePress(&widget, Qt::LeftButton);
    dialog.Settle();
    QTest::mouseRelease(&widget, Qt::LeftButton);
}

} // namespace

// Whatever takes the user out of a malformed box, he is told once and comes back to it.
TEST_F(CodesDialogTest, aMalformedBoxKeepsTheUser)
{
    const TWay ways[] = {
        {"Tab", [](CodesDialog dialog) { QTest::keyClick(&dialog.Box("Reset"), Qt::Key_Tab); }},
        {"Tab twice at once",
         [](CodesDialog dialog) {
             QTest::keyClick(&dialog.Box("Reset"), Qt::Key_Tab);
             QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
         }},
        {"another box", [](CodesDialog dialog) { dialog.Click("BoldOnEdit"); }},
        {"OK", [](CodesDialog dialog) { dialog.Click("btnOK"); }},
        {"slow OK", [](CodesDialog dialog) { clickSlowly(dialog, dialog.Find("btnOK")); }},
        {"Enter", [](CodesDialog dialog) { QTest::keyClick(&dialog.Box("Reset"), Qt::Key_Return); }},
        {"a notation", [](CodesDialog dialog) { dialog.Click(dialog.Notation(decimal)); }},
        {"a notation by program", [](CodesDialog dialog) { dialog.Notation(character).setChecked(true); }},
        {"the list by mouse",
         [](CodesDialog dialog) {
             QTest::mousePress(&dialog.Types(), Qt::LeftButton);
             dialog.Settle();
             EXPECT_FALSE(dialog.Types().view()->isVisible());
             dialog.Activate();
         }},
        {"the list by wheel",
         [](CodesDialog dialog) {
             QWheelEvent event({5, 5}, dialog.Types().mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                               Qt::NoModifier, Qt::NoScrollPhase, false);
             QApplication::sendEvent(&dialog.Types(), &event);
         }},
        {"the mnemonics", [](CodesDialog dialog) { dialog.Click("mnemonics"); }},
    };
    const auto before = m_codes;
    for (const auto &way : ways) {
        SCOPED_TRACE(way.Name);
        EXPECT_FALSE(execute(ptIBM, [&](CodesDialog dialog) {
            dialog.Type("Back", u"1B"_s); // goes with the type that was shown
            dialog.Type("Reset", u"1B,4"_s);
            way.Go(dialog);
            EXPECT_EQ(told(), QStringList(u"Code invalide : 4"_s));
            EXPECT_TRUE(dialog.Window.isVisible());
            EXPECT_TRUE(dialog.Box("Reset").hasFocus());
            EXPECT_EQ(dialog.Box("Reset").text(), u"1B,4"_s);
            EXPECT_EQ(dialog.Types().currentText(), u"IBM"_s);
            EXPECT_EQ(dialog.NotationInForce(), hexadecimal);

            dialog.Type("Reset", u"1B,40"_s); // and everything works again
            dialog.Click(dialog.Notation(decimal));
            EXPECT_EQ(dialog.Box("Reset").text(), u"27,64"_s);
            EXPECT_EQ(dialog.Box("Back").text(), u"27"_s);
            dialog.Types().setCurrentIndex(1);
            EXPECT_EQ(dialog.Box("Back").text(), u"27,101,5"_s);
        }));
        EXPECT_TRUE(told().isEmpty());
        EXPECT_EQ(m_codes, before);
    }
}

TEST_F(CodesDialogTest, cancellingAlwaysWorks)
{
    const TWay ways[] = {
        {"the button", [](CodesDialog dialog) { dialog.Click("btnCancel"); }},
        {"a slow click", [](CodesDialog dialog) { clickSlowly(dialog, dialog.Find("btnCancel")); }},
        {"the focus, and later a key",
         [](CodesDialog dialog) {
             dialog.Find("btnCancel").setFocus();
             dialog.Settle();
             QTest::keyClick(&dialog.Find("btnCancel"), Qt::Key_Space);
         }},
        {"Escape", [](CodesDialog dialog) { QTest::keyClick(&dialog.Box("Ini"), Qt::Key_Escape); }},
        {"the window", [](CodesDialog dialog) { dialog.Window.close(); }},
    };
    const auto before = m_codes;
    for (const auto &way : ways) {
        EXPECT_FALSE(execute(ptEpson, [&](CodesDialog dialog) {
            dialog.Type("Ini", u"41"_s);
            dialog.Click(dialog.Notation(decimal));
            dialog.Types().setCurrentIndex(4);
            dialog.Type("Ini", u"300"_s);
            way.Go(dialog);
            EXPECT_FALSE(dialog.Window.isVisible());
        })) << way.Name;
        EXPECT_EQ(told(), QStringList()) << way.Name;
        EXPECT_EQ(m_codes, before) << way.Name;
    }
}

// "Annuler" lets go of a malformed box, so there may be two of them.
TEST_F(CodesDialogTest, malformedBoxesLeftForAnnulerAreToldOneAtATime)
{
    EXPECT_FALSE(execute(ptEpson, [&](CodesDialog dialog) {
        for (const auto *code : {"Ini", "Back"}) {
            dialog.Type(code, u"xx"_s);
            dialog.Find("btnCancel").setFocus();
            EXPECT_EQ(told(), QStringList());
        }
        dialog.Click("btnOK");
        EXPECT_EQ(told(), QStringList(u"Code invalide : XX"_s));
        EXPECT_TRUE(dialog.Box("Ini").hasFocus());
        dialog.Click("BackEdit");
        EXPECT_EQ(told(), QStringList(u"Code invalide : XX"_s));
        EXPECT_TRUE(dialog.Box("Ini").hasFocus());
    }));
}

// With the real message box, whose own event loop runs inside of the leaving.
TEST_F(CodesDialogTest, theMessageBoxComesOnce)
{
    SetExceptionDisplay({});
    UseMessageBoxes();
    EXPECT_FALSE(execute(ptEpson, [](CodesDialog dialog) {
        int boxes = 0;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [&] {
            if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                EXPECT_EQ(box->text(), u"Code invalide : 300"_s);
                ++boxes;
                QTest::keyClick(box, Qt::Key_Return);
            }
        });
        answer.start(5);
        dialog.Click(dialog.Notation(decimal));
        dialog.Type("Ini", u"300"_s);
        int expected = 0;
        for (auto *const target :
             {&dialog.Find("btnOK"), &dialog.Find("BackEdit"), static_cast<QWidget *>(&dialog.Types()),
              static_cast<QWidget *>(&dialog.Notation(hexadecimal))}) {
            QTest::mousePress(target, Qt::LeftButton);
            QTest::qWait(60);
            QTest::mouseRelease(target, Qt::LeftButton);
            dialog.Activate();
            EXPECT_EQ(boxes, ++expected) << target->objectName().toStdString();
            EXPECT_TRUE(dialog.Box("Ini").hasFocus());
        }
        EXPECT_EQ(dialog.NotationInForce(), decimal);
    }));
}

TEST_F(CodesDialogTest, goesWithTheWindowItStandsOn)
{
    auto *const window = new QWidget;
    window->show();
    const TPrinterCodes before = m_codes;
    EXPECT_FALSE(use(
        [&](CodesDialog dialog) {
            dialog.Type("Ini", u"41"_s);
            delete window;
        },
        [&] { return (new TfmPrnCode(window))->Execute(m_codes, ptEpson); }));
    EXPECT_EQ(m_codes, before);
}
