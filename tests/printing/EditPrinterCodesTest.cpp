#include "CodesDialog.h"
#include "output/RecordingPrintSystem.h"

#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/printing/DosPrint.h>
#include <Zelmar01/printing/UsePrnCode.h>

#include <support/TempFolder.h>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

class EditPrinterCodes : public CodesDialogTest
{
protected:
    EditPrinterCodes()
    {
        SetApplicationDirectory(m_folder.Path());
        UsePrinterCodesDialog();
        m_printer = std::make_unique<TDosPrint>(nullptr, m_system);
        m_printer->setPrnType(ptTiroir);
        m_printer->setPrnName(u"LPT1:"_s);
    }
    ~EditPrinterCodes() override
    {
        SetPrinterCodesDialog({});
        SetApplicationDirectory({});
    }

    bool edit(const std::function<void(CodesDialog)> &work)
    {
        return use(work, [&] { return m_printer->EditPrinterCodes(); });
    }

    TempFolder m_folder;
    std::shared_ptr<RecordingPrintSystem> m_system = std::make_shared<RecordingPrintSystem>();
    std::unique_ptr<TDosPrint> m_printer;
};

} // namespace

TEST_F(EditPrinterCodes, changesTheCodesOnlyWhenConfirmed)
{
    const auto work = [](CodesDialog dialog) { dialog.Type("Tiroir", u"1B,70"_s); };
    EXPECT_FALSE(edit(work));
    EXPECT_EQ(m_printer->Codes, DefaultPrinterCodes());
    EXPECT_TRUE(edit([&](CodesDialog dialog) {
        work(dialog);
        dialog.Click("btnOK");
    }));
    EXPECT_EQ(m_printer->Codes[ptTiroir].Tiroir, TPrinterCode("\x1bp"));
}

TEST_F(EditPrinterCodes, sendsOnTheWayOfThePrinter)
{
    m_printer->setConversion(2); // which a code must not pass through
    EXPECT_FALSE(edit([&](CodesDialog dialog) {
        dialog.Type("Ini", u"1B,40"_s);
        dialog.Click("sendCode");
        EXPECT_EQ(m_system->Sent, "\x1b@");
        EXPECT_EQ(told(), QStringList());

        m_system->Failing = {"FileCreate"};
        dialog.Click("sendCode");
        EXPECT_EQ(told(), QStringList(u"Port de l'imprimante ticket non trouvé"_s));
        m_printer->setPrnName(u"Ticket"_s);
        m_system->Failing = {"StartDocPrinter"};
        dialog.Click("sendCode");
        EXPECT_EQ(told(), QStringList(u"Le code n'est pas parti vers l'imprimante"_s));
    }));
    EXPECT_EQ(m_system->Sent, "\x1b@");
}

TEST_F(EditPrinterCodes, survivesThePrinterThatOpenedIt)
{
    EXPECT_FALSE(edit([&](CodesDialog dialog) {
        dialog.Type("Ini", u"1B,40"_s);
        m_printer.reset();
        dialog.Click("sendCode");
        EXPECT_EQ(told().size(), 1);
        dialog.Click("btnOK");
    }));
}
