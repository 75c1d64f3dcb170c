#include "ReceiptWriter.h"

#include <Zelmar01/core/Windows1252Text.h>
#include <Zelmar01/printing/Conversions.h>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int columns = 40;
constexpr int amountColumns = 12;
constexpr int linesToCutter = 4; // the knife sits above the print head

class Writer
{
public:
    Writer(const TPrinterCodeSet &set, int conversion) : m_set(set), m_conversion(conversion) {}

    void Code(const TPrinterCode &code)
    {
        m_receipt.Ticket.Bytes += code.Bytes();
        // Such a code leaves its parameter, the print mode, to the byte behind it: 0 is the normal one.
        if (code.Bytes().ends_with("\x1b!"))
            m_receipt.Ticket.Bytes += '\0';
    }

    void Text(const QString &text)
    {
        const auto encoded = ToWindows1252(text);
        m_receipt.Ticket.Bytes += ConvertText(m_conversion, encoded.Bytes);
        m_receipt.Ticket.MissingCharacters += encoded.Missing;
        m_receipt.Text += text;
    }

    void Line(const QString &text = {})
    {
        Text(text);
        m_receipt.Ticket.Bytes += m_set.Return.IsEmpty() ? std::string_view("\r\n") : m_set.Return.Bytes();
        m_receipt.Text += u'\n';
    }

    void BoldLine(const QString &text)
    {
        Code(m_set.BoldOn);
        Text(text);
        Code(m_set.BoldOff);
        Line();
    }

    // A printer without codes for alignment gets blanks.
    void Align(const TPrinterCode &code, const QString &text, bool bold, int blanks)
    {
        Code(code);
        const QString margin(blanks, u' ');
        if (code.IsEmpty())
            Text(margin);
        else
            m_receipt.Text += margin;
        bold ? BoldLine(text) : Line(text);
        Code(m_set.Left);
    }

    void Centred(const QString &text, bool bold = false)
    {
        Align(m_set.Centr, text, bold, static_cast<int>(columns - text.size()) / 2);
    }

    void RightAligned(const QString &text, bool bold)
    {
        Align(m_set.Right, text, bold, static_cast<int>(columns - text.size()));
    }

    void Rule() { Line(QString(columns, u'-')); }

    void Total(const QString &label, TCents amount)
    {
        Line(label + EuroText(amount, u' ').rightJustified(columns - label.size()));
    }

    TReceipt &Receipt() { return m_receipt; }

private:
    const TPrinterCodeSet &m_set;
    int m_conversion;
    TReceipt m_receipt;
};

void writeHead(Writer &writer, const QDateTime &moment)
{
    writer.Centred(u"BIJOUTERIE ZELMAR"_s, true);
    writer.Centred(u"8, rue des Orfèvres"_s);
    writer.Line();
    writer.Line(u"Vente du "_s + moment.toString(u"dd/MM/yyyy"_s) +
                moment.toString(u"HH'h'mm"_s).rightJustified(columns - 19));
    writer.Rule();
}

void writeLines(Writer &writer, const TSale &sale)
{
    constexpr int leftColumns = columns - 2 * amountColumns;
    writer.Line(u"Article"_s.leftJustified(leftColumns) + u"HT"_s.rightJustified(amountColumns) +
                u"TTC"_s.rightJustified(amountColumns));
    for (const auto &line : sale.Lines) {
        writer.Line(line.Article.Name.left(columns));
        const auto pieces = u"%1 x "_s.arg(line.Quantity).rightJustified(5) +
                            AmountText(line.Article.Price, u' ').rightJustified(9);
        writer.Line(pieces.leftJustified(leftColumns) +
                    AmountText(line.WithoutVat(), u' ').rightJustified(amountColumns) +
                    AmountText(line.WithVat(), u' ').rightJustified(amountColumns));
    }
    writer.Rule();
}

void writeTotals(Writer &writer, const TSale &sale)
{
    writer.Total(u"Total HT"_s, sale.WithoutVat());
    writer.Total(u"TVA %1 %"_s.arg(VatRate / 10), sale.Vat());
    writer.RightAligned(u"TOTAL "_s + EuroText(sale.WithVat(), u' '), true);
    writer.Line();
    writer.Centred(u"Échange sous trente jours,"_s);
    writer.Centred(u"merci de votre fidélité !"_s);
}

} // namespace

TReceipt WriteReceipt(const TSale &sale, const QDateTime &moment, const TPrinterCodes &codes,
                      const TReceiptForm &form)
{
    const auto &set = codes[form.Type];
    Writer writer(set, form.Conversion);
    writer.Code(set.Ini);
    writer.Code(set.SelTic);
    writeHead(writer, moment);
    writeLines(writer, sale);
    writeTotals(writer, sale);
    for (int line = 0; line < linesToCutter && !set.Cutter.IsEmpty(); ++line)
        writer.Line();

    auto receipt = std::move(writer.Receipt());
    receipt.Ticket.Tail += set.Cutter.IsEmpty() ? set.Eject.Bytes() : set.Cutter.Bytes();
    if (form.OpenDrawer)
        receipt.Ticket.Tail += codes[ptTiroir].Tiroir.Bytes();
    return receipt;
}

} // namespace Shop
