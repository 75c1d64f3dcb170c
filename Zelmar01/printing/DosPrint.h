#pragma once

#include <Zelmar01/core/Component.h>
#include <Zelmar01/printing/CodeFile.h>
#include <Zelmar01/printing/PrinterCodes.h>
#include <Zelmar01/printing/output/RawPaths.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// What became of the last call that printed.
struct TDosPrintOutcome : TPrintOutcome
{
    /// The characters of the text that Windows-1252 does not have, each once; they were sent as "?".
    QString MissingCharacters;
};

/// The receipt printer, the journal or slip station and the cash drawer of a till.
///
/// Bytes go out as they are, without any layout or rendering, on the first of these ways that applies: the
/// printer driver's pass-through (EscPassThrough), a local port (PrnName is one of LocalPortNames), or a raw
/// job of the print spooler. Calls run on the caller's thread and return when the bytes have left or the
/// way's time is over (see RawPaths.h and TPrintSystemOptions).
///
///     TDosPrint printer;
///     printer.setPrnName("COM1:");
///     printer.PrintString(QStringLiteral("Bague or 18 ct, 3 saphirs, 1 250 €"), false);
///     printer.OuvreTiroirCaisse();
class TDosPrint : public TComponent
{
    Q_OBJECT
    Q_PROPERTY(TPrinterType PrnType READ PrnType WRITE setPrnType)
    Q_PROPERTY(QString PrnName READ PrnName WRITE setPrnName)
    Q_PROPERTY(QString PrnFile READ PrnFile WRITE setPrnFile)
    Q_PROPERTY(bool EscPassThrough READ EscPassThrough WRITE setEscPassThrough)
    Q_PROPERTY(int Conversion READ Conversion WRITE setConversion)
public:
    // The enumeration is that of PrinterCodes.h, which knows no Qt: it is spelled out for Qt's compiler
    // alone.
#ifdef Q_MOC_RUN
    enum TPrinterType{ptHPPCL, ptEpson, ptIBM, ptPlain, ptUser1, ptTiroir};
    Q_ENUM(TPrinterType)
#else
    using TPrinterType = Zelmar01::TPrinterType;
    using enum Zelmar01::TPrinterType;
#endif

    /// `owner` frees the component. `system` brings the bytes to the printer; without one the platform's own
    /// does.
    ///
    /// The codes are the default ones, with those of the code file "Corvantix.PCC" in the application's
    /// directory over them. An error in that file goes to the exception display.
    explicit TDosPrint(QObject *owner = nullptr, std::shared_ptr<IPrintSystem> system = {});

    /// The set that the codes dialog shows first; it has no influence on printing.
    TPrinterType PrnType() const
    {
        return m_prnType;
    }
    void setPrnType(TPrinterType value)
    {
        m_prnType = value;
    }

    /// A local port, a printer of the system, or "Par défaut" (in any letter case) for the current printer of
    /// Printer(). Setting the name of anything but a local port makes that printer the current one, or the
    /// default printer when there is none of that name.
    QString PrnName() const
    {
        return m_prnName;
    }
    void setPrnName(const QString &value)
    {
        fPrnDosPort(value);
    }

    /// The code file. Setting it loads it; codes that it does not name keep their values. A malformed file
    /// raises EConvertError, or goes to the exception display while the component is loading; what was read
    /// before the error stays applied.
    QString PrnFile() const
    {
        return m_prnFile;
    }
    void setPrnFile(const QString &value);

    /// Send through the printer driver's pass-through escape, whatever PrnName says, to the current printer
    /// of Printer().
    bool EscPassThrough() const
    {
        return m_escPassThrough;
    }
    void setEscPassThrough(bool value)
    {
        m_escPassThrough = value;
    }

    /// The conversion that PrintString applies when asked: 0 none, 1 fWinToPrn, 2 fWinToCitizen
    /// (Conversions.h). Any other number sends an empty job.
    int Conversion() const
    {
        return m_conversion;
    }
    void setConversion(int value)
    {
        m_conversion = value;
    }

    /// Whether PrnName names a local port.
    bool PortIsLocal() const
    {
        return m_portIsLocal;
    }

    /// The code sets, one a printer type: `Codes[ptEpson].BoldOn`.
    TPrinterCodes Codes = DefaultPrinterCodes();

    /// Merges a code file into Codes; see CodeFile.h for its form, its place and what is raised. File names
    /// are taken as CodeFilePath() says.
    void LoadPrinterCodes(const QString &fileName);
    /// Writes the code sets to a code file and returns those codes that cannot be read from it again. Raises
    /// EInOutError.
    std::vector<TUnreadableCode> SavePrinterCodes(const QString &fileName) const;
    /// Writes one code line to an open file (a file descriptor of the C library); true when all of it was
    /// written.
    static bool WriteCode(int fileHandle, std::string_view keyName, std::string_view code);
    /// The writer of PrnFile at run time; ends loading.
    void fPrnFile(const QString &value);
    /// Lets the user edit Codes, beginning with the set of PrnType, and send single codes to the printer;
    /// true when he confirmed. Raises EInvalidOperation when no dialog was set: a host with windows calls
    /// UsePrinterCodesDialog() (UsePrnCode.h) at its start.
    bool EditPrinterCodes();

    /// Sends a text, converted by Conversion when `convert` is true. The text may hold control codes, but
    /// then must not be converted. Returns whether the way taken reports success; Outcome() tells more.
    ///
    /// Bytes, char literals among them, are taken as Windows-1252: write QStringLiteral("Été") for a text
    /// with accents, which is brought to Windows-1252 first. A char literal ends at its first zero byte. Data
    /// beyond the limit of the way are not sent (4086 bytes to a port, 4085 otherwise); PrintTicket has no
    /// such limit.
    ///
    /// A port raises EInOutError: "Port de l'imprimante ticket non trouvé" or "Problème d'écriture sur
    /// l'imprimante ticket !".
    bool PrintString(std::string_view text, bool convert);
    bool PrintString(const QString &text, bool convert);
    bool PrintString(const char *text, bool convert)
    {
        return PrintString(std::string_view(text), convert);
    }
    bool PrintString(const QByteArray &text, bool convert)
    {
        return PrintString(std::string_view(text.constData(), static_cast<std::size_t>(text.size())),
                           convert);
    }

    /// Opens the cash drawer: sends the Tiroir code of ptTiroir on the way that PrnName selects. Raises like
    /// PrintString.
    void OuvreTiroirCaisse();

    /// What PrintTicket puts around the text, from the set of one printer type.
    struct TTicketOptions
    {
        TPrinterType Type = ptPlain; ///< whose codes are used
        /// Initialise the printer before the text. The Epson code takes the first byte of the text as its
        /// parameter.
        bool Ini = false;
        bool Eject = false;      ///< form feed behind the text
        bool Cut = false;        ///< cut the paper behind the text
        bool OpenDrawer = false; ///< open the drawer in the same job as the end of the text
        bool Convert = true;     ///< apply Conversion to the text, never to the codes
    };

    /// The bytes of a ticket and the codes that must stay with its last line.
    struct TTicket
    {
        std::string Bytes; ///< the codes before the text, and the text
        std::string Tail;  ///< cut, form feed and drawer
        QString MissingCharacters;
    };
    TTicket ComposeTicket(const QString &text, const TTicketOptions &options) const;

    /// Sends a text of any length, in several calls cut at line ends when it is longer than one may be.
    /// Returns whether all of them succeeded; the first that fails is the last. Outcome() adds them up.
    /// Raises like PrintString.
    bool PrintTicket(const QString &text, const TTicketOptions &options);
    bool PrintTicket(const TTicket &ticket);

    /// What became of the last call that printed, including one that raised.
    const TDosPrintOutcome &Outcome() const
    {
        return m_outcome;
    }

    /// The printer object, for the list of printers and the current one. Each component has its own unless
    /// the host lets several share one; it then prints through that object's system.
    const std::shared_ptr<TPrinterObject> &Printer() const
    {
        return m_printer;
    }
    void SetPrinter(std::shared_ptr<TPrinterObject> printer);

    /// The writer of PrnName.
    void fPrnDosPort(const QString &value);
    /// Sets and returns PortIsLocal: whether the name is one of LocalPortNames.
    bool fPortIsLocal(const QString &name);
    /// The three ways. They return the way's result and store Outcome(); the first does not use the name.
    bool fPrintStringwPassTrough(const QString &printerName, std::string_view data);
    bool fPrintStringwFileCreate(const QString &printerName, std::string_view data);
    bool fPrintStringwOpenPrinter(const QString &printerName, std::string_view data);

private:
    bool send(const std::string &data);
    void sendCode(std::string_view code);

    TPrinterType m_prnType = ptHPPCL;
    bool m_escPassThrough = false;
    bool m_portIsLocal = false;
    QString m_prnName, m_prnFile;
    int m_conversion = 0;
    std::shared_ptr<TPrinterObject> m_printer;
    TDosPrintOutcome m_outcome;
};

// What Q_ENUM defines for an enumeration that it can stand beside.
constexpr const QMetaObject *qt_getEnumMetaObject(TPrinterType) noexcept
{
    return &TDosPrint::staticMetaObject;
}
constexpr const char *qt_getEnumName(TPrinterType) noexcept
{
    return "TPrinterType";
}

} // namespace Zelmar01
