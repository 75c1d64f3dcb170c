#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/data/binding/FieldText.h>
#include <Zelmar01/tabs/TabErrors.h>
#include <Zelmar01/tasks/service/TaskResults.h>
#include <Zelmar01/tasks/service/TriggerText.h>
#include <Zelmar01/tasks/service/Utf16.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QTranslator>

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

using namespace Zelmar01;

namespace {

// Says every text in brackets.
class TBrackets : public QTranslator
{
public:
    TBrackets() { QCoreApplication::installTranslator(this); }
    ~TBrackets() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QByteArray(context).startsWith("Zelmar01")
                   ? QStringLiteral("[%1]").arg(QString::fromUtf8(text))
                   : QString();
    }
};

std::string raised(const std::function<void()> &work)
{
    try {
        work();
    } catch (const std::exception &error) {
        return error.what();
    }
    return "nothing raised";
}

TEST(Translation, EveryRoomAsksTheHostForItsTexts)
{
    const TBrackets brackets;
    TASK_TRIGGER daily = {.cbTriggerSize = sizeof(TASK_TRIGGER),
                          .wBeginYear = 2026,
                          .wBeginMonth = 1,
                          .wBeginDay = 2,
                          .wStartHour = 3,
                          .TriggerType = TASK_TIME_TRIGGER_DAILY};
    daily.Type.Daily.DaysInterval = 2;
    const std::pair<std::string, std::string> said[] = {
        {MessageText(TMessage::DiskFull), "[Disque plein.]"},
        {CauseFromErrno(ENOENT, "a.PCC").Text, "a.PCC : [n'existe pas]"},
        {ResultText(TaskResult::TaskDisabled), "[La tâche est désactivée.]"},
        {Utf8FromUtf16(TriggerText(daily)), "[À 03:00] [tous les 2 jours][, à partir du 02/01/2026]"},
        {raised([] { TClientDataSet().FieldByName(QStringLiteral("ID")); }),
         "[L'ensemble de données «  » est fermé]"},
        {raised([] { throw EStringListError(7); }), "[Indice de liste hors limites (7)]"},
        {FieldTextOf(true, ftBoolean, QLocale::c()).toStdString(), "[Oui]"},
        {raised([] { TzmImage().LoadFromFile(QStringLiteral("none")); }), "[L'image ne peut pas être lue]"},
    };
    for (const auto &[text, expected] : said)
        EXPECT_EQ(text, expected);
    EXPECT_EQ(FieldValueOf(QStringLiteral("[oui]"), ftBoolean, QLocale::c()), QVariant(true));
}

TEST(Translation, TheNameOfTheDefaultPrinterStaysAsFormsKeepIt)
{
    const TBrackets brackets;
    EXPECT_EQ(MessageText(TMessage::DefaultPrinter), "Par défaut");
}

TEST(Translation, ButtonsOfMessageBoxesAreInTheLanguageOfTheTexts)
{
    QStringList captions;
    for (const bool translated : {false, true}) {
        const auto brackets = translated ? std::make_unique<TBrackets>() : nullptr;
        QTimer::singleShot(0, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            for (auto *button : box->buttons())
                captions << button->text();
            box->reject();
        });
        UseMessageBoxes();
        MessageDlg(QStringLiteral("?"), mtConfirmation, mbYes | mbNo | mbCancel);
    }
    captions.sort();
    EXPECT_EQ(captions.join(u' '), QStringLiteral("&Non &Oui Annuler [&Non] [&Oui] [Annuler]"));
}

TEST(Translation, NumbersAreFilledOnce)
{
    EXPECT_EQ(Filled("%1 de %2 : %1", {"a%2", "b"}), "a%2 de b : a%2");
    EXPECT_EQ(Filled("100 % %3 %0 %", {"a", "b"}), "100 % %3 %0 %");
}

} // namespace
