#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/core/WidgetBoxes.h>

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

using namespace Zelmar01;

namespace {

// Answers the next message box of the application once it is open.
template<class Answer>
void whenBoxOpens(Answer answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        answer(box);
    });
}

class Hooks : public testing::Test
{
protected:
    void TearDown() override
    {
        SetMessageBox({});
        SetExceptionDisplay({});
    }
};

struct TBoxCase
{
    TMsgDlgButtons Buttons;
    TMsgDlgBtn ClosedBy; // the answer when the window is closed
};
const TBoxCase boxCases[] = {{mbOK, mbOK}, {mbYes | mbNo, mbNo}, {mbYes | mbNo | mbCancel, mbCancel}};

} // namespace

TEST_F(Hooks, aBoxThatNothingShowsIsAnError)
{
    EXPECT_THROW(MessageDlg(QStringLiteral("Code non valide"), mtInformation, mbOK), EInvalidOperation);
}

TEST_F(Hooks, boxesShowTheTextAsItIsAndAnswerWhenClosed)
{
    UseMessageBoxes();
    for (const auto &boxCase : boxCases) {
        QString shown;
        whenBoxOpens([&](QMessageBox *box) {
            shown = box->text();
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->buttons().size(), qPopulationCount(uint(boxCase.Buttons)));
            box->close();
        });
        EXPECT_EQ(MessageDlg(QStringLiteral("<b>5 > 3</b> & é"), mtConfirmation, boxCase.Buttons),
                  boxCase.ClosedBy);
        EXPECT_EQ(shown, QStringLiteral("<b>5 > 3</b> & é"));
    }
    whenBoxOpens([](QMessageBox *box) { box->button(QMessageBox::Yes)->click(); });
    EXPECT_EQ(MessageDlg(QStringLiteral("Supprimer ?"), mtConfirmation, mbYes | mbNo), mbYes);
}

TEST_F(Hooks, windowsNeverTakeThePlaceOfTheHostsOwn)
{
    int asked = 0, shown = 0;
    SetMessageBox([&](const QString &, TMsgDlgType, TMsgDlgButtons) { return ++asked, mbNo; });
    SetExceptionDisplay([&](const std::exception &) { ++shown; });
    UseMessageBoxes();
    EXPECT_EQ(MessageDlg({}, mtWarning, mbYes | mbNo), mbNo);
    ShowException(EConvertError("Code invalide : x"));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(shown, 1);
}

TEST_F(Hooks, anExceptionIsShownWithItsCause)
{
    UseMessageBoxes();
    QString text, details;
    whenBoxOpens([&](QMessageBox *box) {
        text = box->text();
        details = box->informativeText();
        box->close();
    });
    ShowingExceptions([] {
        throw EInOutError("Port de l'imprimante ticket non trouvé",
                          {13, "/dev/usb/lp0 : Permission denied", "rejoindre le groupe « lp »"});
    });
    EXPECT_EQ(text, QStringLiteral("Port de l'imprimante ticket non trouvé"));
    EXPECT_EQ(details, QStringLiteral("/dev/usb/lp0 : Permission denied (rejoindre le groupe « lp »)"));
}
