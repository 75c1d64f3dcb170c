#include <Zelmar01/printing/PrnCodeGroup.h>

#include <Zelmar01/printing/PrnCodeBox.h>

#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

// Columns of the grid. A box of the first lines begins where the labels of the others still are.
enum : int { rowLabel, onLabel, on, offLabel, off, gap, rightLabel, right };

constexpr int onWide = onLabel, offWide = offLabel;
constexpr int headRow = 0, firstGap = 4, justificationRow = 7, lastRow = 11;

struct TPlace
{
    std::string_view Code;
    const char16_t *Name; // read aloud
    int Row, Column;
};
// In the order in which the Tab key goes through them.
constexpr TPlace places[] = {
    {"BoldOn", u"Bold ON", 1, onWide},
    {"BoldOff", u"Bold OFF", 1, offWide},
    {"ItalicOn", u"Italic ON", 2, onWide},
    {"ItalicOff", u"Italic OFF", 2, offWide},
    {"UnderOn", u"Underline ON", 3, onWide},
    {"UnderOff", u"Underline OFF", 3, offWide},
    {"CarA", u"Fonte A", 5, on},
    {"CarB", u"Fonte B", 5, off},
    {"cBlack", u"Couleur No", 6, on},
    {"cRed", u"Couleur Rg", 6, off},
    {"Left", u"Justification Gauche", 8, on},
    {"Centr", u"Justification Centrée", 9, on},
    {"Right", u"Justification Droite", 10, on},
    {"SelTic", u"Ticket", 1, right},
    {"SelJnl", u"Journal", 2, right},
    {"SelFac", u"Facture", 3, right},
    {"Cutter", u"Cutter", 5, right},
    {"Tiroir", u"Tiroir", 6, right},
    {"Eject", u"Eject", justificationRow, right},
    {"Return", u"Return", 8, right},
    {"Back", u"Back", 9, right},
    {"Reset", u"Reset", 10, right},
    {"Ini", u"Ini", lastRow, right},
};
static_assert(std::size(places) == PrinterCodeCount);

struct TLabel
{
    const char16_t *Text;
    int Row, Column;
};
constexpr TLabel labels[] = {
    {u"Bold", 1, rowLabel},      {u"Italic", 2, rowLabel},      {u"Underline", 3, rowLabel},
    {u"Couleur", 6, rowLabel},   {u"No", 6, onLabel},           {u"Gauche", 8, rowLabel},
    {u"Centrée", 9, rowLabel},   {u"Droite", 10, rowLabel},     {u"B", 5, offLabel},
    {u"Rg", 6, offLabel},        {u"Ticket", 1, rightLabel},    {u"Journal", 2, rightLabel},
    {u"Facture", 3, rightLabel}, {u"Cutter", 5, rightLabel},    {u"Tiroir", 6, rightLabel},
    {u"Eject", 7, rightLabel},   {u"Return", 8, rightLabel},    {u"Back", 9, rightLabel},
    {u"Reset", 10, rightLabel},  {u"Ini", lastRow, rightLabel},
};

// What a box shows without scrolling: the lists of most codes.
constexpr int boxCharacters = 20;

std::size_t indexOf(std::string_view code)
{
    const auto &fields = PrinterCodeFields();
    std::size_t i = 0;
    while (fields[i].Name != code)
        ++i;
    return i;
}

QLabel *makeLabel(const char16_t *text)
{
    return new QLabel(QString::fromUtf16(text));
}

} // namespace

TPrnCodeGroup::TPrnCodeGroup(QWidget *parent) : QGroupBox(u" Codes de contrôle"_s, parent)
{
    setObjectName(u"GroupBox1"_s);
    auto *const grid = new QGridLayout(this);
    const int space = fontMetrics().height() / 4;
    grid->setVerticalSpacing(space);
    for (const int row : {firstGap, justificationRow})
        grid->setRowMinimumHeight(row, 2 * space);
    grid->setColumnMinimumWidth(gap, 4 * space);
    addBoxes(*grid);
    addLabels(*grid);
}

void TPrnCodeGroup::addBoxes(QGridLayout &grid)
{
    for (const auto &place : places) {
        auto *const box = new TPrnCodeBox(this);
        box->setObjectName(QString::fromLatin1(place.Code.data(), static_cast<qsizetype>(place.Code.size())) +
                           u"Edit"_s);
        box->setAccessibleName(QString::fromUtf16(place.Name));
        box->setMinimumWidth(box->fontMetrics().averageCharWidth() * boxCharacters);
        const bool isWide = place.Column == onWide || place.Column == offWide;
        grid.addWidget(box, place.Row, place.Column, 1, isWide ? 2 : 1);
        m_boxes[indexOf(place.Code)] = box;
    }
}

void TPrnCodeGroup::addLabels(QGridLayout &grid)
{
    for (const auto &label : labels)
        grid.addWidget(makeLabel(label.Text), label.Row, label.Column);
    grid.addWidget(makeLabel(u"Fonte     A"), 5, rowLabel, 1, 2);
    grid.addWidget(makeLabel(u"Justification"), justificationRow, on, Qt::AlignBottom);
    grid.addWidget(makeLabel(u"ON"), headRow, onWide, 1, 2, Qt::AlignHCenter);
    grid.addWidget(makeLabel(u"OFF"), headRow, offWide, 1, 2, Qt::AlignHCenter);
}

} // namespace Zelmar01
