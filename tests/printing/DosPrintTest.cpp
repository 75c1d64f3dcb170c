#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/printing/DosPrint.h>
#include <Zelmar01/printing/PrnCodeDialog.h>

#include "output/RecordingPrintSystem.h"
#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QMetaEnum>
#include <QWidget>

using namespace Zelmar01;
using namespace std::string_literals;
using TCalls = std::vector<std::string>;

namespace {

class DosPrint : public testing::Test
{
protected:
    DosPrint() { SetApplicationDirectory(m_folder.Path()); }
    ~DosPrint() override
    {
        SetApplicationDirectory({});
        SetExceptionDisplay({});
    }

    // A code file with one good line before a malformed one.
    void writeMalformedFile(const QString &name)
    {
        QFile file(QString::fromStdString((m_folder / name.toStdString()).string()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("DosPrintControlCodes").leftJustified(72) + "*\r\n");
        file.write(QByteArray(":5").leftJustified(51) + QByteArray("Ini").leftJustified(21) + "*\r\n");
        file.write(QByteArray(":5,x").leftJustified(51) + QByteArray("Back").leftJustified(21) + "*\r\n");
    }

    TempFolder m_folder;
    std::shared_ptr<RecordingPrintSystem> m_system = std::make_shared<RecordingPrintSystem>();
};

} // namespace

TEST_F(DosPrint, choosesTheWay)
{
    struct TCase
    {
        const char *Name;
        bool PassThrough;
        std::string FirstCall;
        bool Local;
    };
    for (const auto &way : {TCase{"LPT1:", false, "SetErrorMode 1", true},
                            {"COM4:", false, "SetErrorMode 1", true},
                            {"LPT1:", true, "BeginDoc Atelier", true},
                            {"lpt1:", false, "OpenPrinter lpt1:", false},
                            {"LPT1", false, "OpenPrinter LPT1", false},
                            {"null", false, "OpenPrinter null", false},
                            {"Ticket", false, "OpenPrinter Ticket", false},
                            {"Ticket", true, "BeginDoc Ticket", false},
                            {"Absente", true, "BeginDoc Atelier", false},
                            {"Par défaut", false, "OpenPrinter Atelier", false},
                            {"PAR DÉFAUT", false, "OpenPrinter Atelier", false},
                            {"par Défaut", true, "BeginDoc Atelier", false},
                            {"Par defaut", false, "OpenPrinter Par defaut", false}}) {
        SCOPED_TRACE(way.Name);
        m_system->Calls.clear();
        TDosPrint printer(nullptr, m_system);
        printer.setPrnName(QString::fromUtf8(way.Name));
        printer.setEscPassThrough(way.PassThrough);
        EXPECT_EQ(printer.PortIsLocal(), way.Local);
        EXPECT_TRUE(printer.PrintString("x", false));
        EXPECT_EQ(m_system->Calls.front(), way.FirstCall);
    }
}

TEST_F(DosPrint, aPortLeavesTheCurrentPrinterAlone)
{
    TDosPrint printer(nullptr, m_system);
    printer.setPrnName(QStringLiteral("Ticket"));
    printer.setPrnName(QStringLiteral("COM1:"));
    printer.setEscPassThrough(true);
    printer.PrintString("x", false);
    EXPECT_EQ(m_system->Calls.front(), "BeginDoc Ticket");
}

TEST_F(DosPrint, theDefaultPrinterIsTheOneOfTheMoment)
{
    TDosPrint printer(nullptr, m_system);
    printer.setPrnName(QStringLiteral("Ticket"));
    printer.setPrnName(QStringLiteral("Par défaut"));
    EXPECT_EQ(printer.Printer()->CurrentPrinter(), "Atelier");
    printer.Printer()->SetPrinterIndex(0);
    printer.PrintString("x", false);
    EXPECT_EQ(m_system->Calls.front(), "OpenPrinter Bureau");

    m_system->PrinterNames.clear();
    m_system->Default.clear();
    m_system->Failing = {"OpenPrinter"};
    printer.setPrnName(QStringLiteral("Par défaut"));
    EXPECT_FALSE(printer.PrintString("x", false));
    EXPECT_EQ(m_system->Calls.back(), "OpenPrinter ");
}

TEST_F(DosPrint, printersAreSharedWhenTheHostSaysSo)
{
    TDosPrint one(nullptr, m_system), other(nullptr, m_system);
    one.setPrnName(QStringLiteral("Ticket"));
    EXPECT_EQ(other.Printer()->CurrentPrinter(), "Atelier");
    other.SetPrinter(one.Printer());
    one.setPrnName(QStringLiteral("Bureau"));
    EXPECT_EQ(other.Printer()->CurrentPrinter(), "Bureau");
}

TEST_F(DosPrint, convertsWhenAsked)
{
    struct TCase
    {
        int Conversion;
        bool Convert;
        std::string Sent;
    };
    for (const auto &way : {TCase{0, true, "\xE9@\x80"},
                            {1, true, "\x82@\xE4"},
                            {2, true, "{\xA3\x80"},
                            {2, false, "\xE9@\x80"},
                            {7, true, ""},
                            {7, false, "\xE9@\x80"}}) {
        m_system->Sent.clear();
        TDosPrint printer(nullptr, m_system);
        printer.setConversion(way.Conversion);
        EXPECT_TRUE(printer.PrintString(QStringLiteral("é@€"), way.Convert));
        EXPECT_EQ(m_system->Sent, way.Sent) << way.Conversion;
    }
}

TEST_F(DosPrint, takesTextsAndBytesAlike)
{
    TDosPrint printer(nullptr, m_system);
    printer.PrintString("a\xE9", false);
    printer.PrintString(QByteArray("b\0\xFF", 3), false);
    printer.PrintString("c\0"s, false);
    printer.PrintString(QStringLiteral("dé"), false);
    EXPECT_EQ(m_system->Sent, "a\xE9"
                              "b\0\xFF"
                              "c\0"
                              "d\xE9"s);
}

TEST_F(DosPrint, reportsCharactersThatCannotBePrinted)
{
    TDosPrint printer(nullptr, m_system);
    printer.PrintString(QStringLiteral("≤ 5 €"), false);
    EXPECT_EQ(m_system->Sent, "? 5 \x80");
    EXPECT_EQ(printer.Outcome().MissingCharacters, QStringLiteral("≤"));

    printer.setPrnName(QStringLiteral("LPT1:"));
    m_system->Failing = {"FileCreate"};
    EXPECT_THROW(printer.PrintString(QStringLiteral("Ω"), false), EInOutError);
    EXPECT_EQ(printer.Outcome().MissingCharacters, QStringLiteral("Ω"));
    EXPECT_THROW(printer.PrintString("bytes", false), EInOutError);
    EXPECT_TRUE(printer.Outcome().MissingCharacters.isEmpty());
}

TEST_F(DosPrint, theDrawerOpensOnTheSameWay)
{
    TDosPrint printer(nullptr, m_system);
    printer.setConversion(2);
    printer.OuvreTiroirCaisse();
    printer.Codes[ptTiroir].Tiroir = TPrinterCode("\x1bp@\x19\xfa");
    printer.OuvreTiroirCaisse();
    EXPECT_EQ(m_system->Sent, "\x07\x1bp@\x19\xfa");
}

TEST_F(DosPrint, aTicketIsOneJobWithItsCodesUnconverted)
{
    TDosPrint printer(nullptr, m_system);
    printer.setConversion(2);
    EXPECT_TRUE(
        printer.PrintTicket(QStringLiteral("Été @\r\n"),
                            {.Type = ptIBM, .Ini = true, .Eject = true, .Cut = true, .OpenDrawer = true}));
    EXPECT_EQ(m_system->Sent, "\x1b@\x1bR\x01\x1b\x1dt\x05"
                              "Et{ \xA3\r\n"
                              "\f\x1b"
                              "d\x02\x07");
    EXPECT_EQ(std::count(m_system->Calls.begin(), m_system->Calls.end(), "ClosePrinter"), 1);
}

TEST_F(DosPrint, aLongTicketGoesInSeveralCallsAndAddsUp)
{
    QString text;
    for (int i = 0; i < 200; ++i)
        text += QStringLiteral("Bague saphir, or gris, taille 52 ......... 1 250,00\n");
    TDosPrint printer(nullptr, m_system);
    printer.setPrnName(QStringLiteral("LPT1:"));
    EXPECT_TRUE(printer.PrintTicket(text, {.OpenDrawer = true}));
    EXPECT_EQ(m_system->Sent, text.toStdString() + "\x07");
    EXPECT_EQ(std::count(m_system->Calls.begin(), m_system->Calls.end(), "FileClose"), 3);
    EXPECT_EQ(printer.Outcome().Accepted, m_system->Sent.size());
    EXPECT_EQ(printer.Outcome().Asked, m_system->Sent.size());
    EXPECT_EQ(printer.Outcome().Cut, 0U);

    m_system->Takes = 4000; // the first piece is written short
    EXPECT_THROW(printer.PrintTicket(text, {}), EInOutError);
    EXPECT_EQ(printer.Outcome().Accepted, 4000U);
    EXPECT_EQ(printer.Outcome().Asked, static_cast<std::size_t>(text.size()));
}

TEST_F(DosPrint, aMalformedFileIsShownWhileTheFormIsBuiltAndRaisedAfterwards)
{
    writeMalformedFile(QStringLiteral("Corvantix.PCC"));
    std::vector<std::string> shown;
    SetExceptionDisplay([&](const std::exception &error) { shown.emplace_back(error.what()); });

    QWidget form;
    TDosPrint printer(&form, m_system);
    EXPECT_EQ(shown, TCalls{"Code invalide : x"});
    EXPECT_EQ(printer.Codes[ptTiroir].Ini, TPrinterCode("\5"));

    printer.setPrnFile(QStringLiteral("Corvantix"));
    EXPECT_EQ(shown.size(), 2U);
    EXPECT_EQ(printer.PrnFile(), QStringLiteral("Corvantix"));
    EXPECT_THROW(printer.LoadPrinterCodes(QStringLiteral("Corvantix")), EConvertError);

    form.ensurePolished();
    EXPECT_THROW(printer.setPrnFile(QStringLiteral("Corvantix")), EConvertError);
    TDosPrint onAnotherForm(new QWidget(&form), m_system);
    EXPECT_THROW(onAnotherForm.fPrnFile(QStringLiteral("Corvantix")), EConvertError);
    EXPECT_EQ(shown.size(), 3U);
}

TEST_F(DosPrint, codesAreSavedAndLoadedBesideTheApplication)
{
    TDosPrint printer(nullptr, m_system);
    printer.Codes[ptUser1].BoldOn = TPrinterCode("\x1bG");
    EXPECT_TRUE(printer.SavePrinterCodes(QStringLiteral("Corvantix")).empty());
    EXPECT_EQ(TDosPrint(nullptr, m_system).Codes[ptUser1].BoldOn, TPrinterCode("\x1bG"));
    TDosPrint other(nullptr, m_system);
    other.Codes[ptUser1].BoldOn = {};
    other.Codes[ptPlain].Ini = TPrinterCode("kept");
    other.setPrnFile(QStringLiteral("Corvantix.PCC"));
    EXPECT_EQ(other.Codes[ptUser1].BoldOn, TPrinterCode("\x1bG"));
    EXPECT_EQ(other.Codes[ptPlain].Ini, TPrinterCode("kept"));
}

TEST_F(DosPrint, theCodesDialogIsAskedForOnlyWhereThereIsOne)
{
    TDosPrint printer(nullptr, m_system);
    printer.setPrnType(ptIBM);
    EXPECT_THROW(printer.EditPrinterCodes(), EInvalidOperation);
    const auto before =
        SetPrinterCodesDialog([](TPrinterCodes &codes, TPrinterType type, const TCodeSending &) {
            codes[type].Ini = TPrinterCode("!");
            return true;
        });
    EXPECT_TRUE(printer.EditPrinterCodes());
    EXPECT_EQ(printer.Codes[ptIBM].Ini, TPrinterCode("!"));
    SetPrinterCodesDialog(before);
}

TEST_F(DosPrint, formsReadAndWriteItsProperties)
{
    TDosPrint printer(nullptr, m_system);
    const auto types = QMetaEnum::fromType<TDosPrint::TPrinterType>();
    EXPECT_EQ(types.keyCount(), static_cast<int>(PrinterTypeCount));
    const std::pair<const char *, TPrinterType> names[] = {{"ptHPPCL", ptHPPCL}, {"ptEpson", ptEpson},
                                                           {"ptIBM", ptIBM},     {"ptPlain", ptPlain},
                                                           {"ptUser1", ptUser1}, {"ptTiroir", ptTiroir}};
    for (const auto &[name, value] : names)
        EXPECT_EQ(types.keyToValue(name), value) << name;
    EXPECT_TRUE(printer.setProperty("PrnType", "ptUser1"));
    EXPECT_EQ(printer.PrnType(), ptUser1);
    EXPECT_EQ(printer.property("PrnType").toInt(), ptUser1);
    EXPECT_TRUE(printer.setProperty("PrnName", "COM2:"));
    EXPECT_TRUE(printer.PortIsLocal());
}
