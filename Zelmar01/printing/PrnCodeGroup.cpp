#include <Zelmar01/printing/PrnCodeGroup.h>

#include <Zelmar01/printing/PrnCodeBox.h>

#include <QCoreApplication>
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
    const char *Name; // read aloud
    int Row, Column;
};
// In the order in which the Tab key goes through them.
constexpr TPlace places[] = {
    {"BoldOn", QT_TRANSLATE_NOOP("Zelmar01", "Bold ON"), 1, onWide},
    {"BoldOff", QT_TRANSLATE_NOOP("Zelmar01", "Bold OFF"), 1, offWide},
    {"ItalicOn", QT_TRANSLATE_NOOP("Zelmar01", "Italic ON"), 2, onWide},
    {"ItalicOff", QT_TRANSLATE_NOOP("Zelmar01", "Italic OFF"), 2, offWide},
    {"UnderOn", QT_TRANSLATE_NOOP("Zelmar01", "Underline ON"), 3, onWide},
    {"UnderOff", QT_TRANSLATE_NOOP("Zelmar01", "Underline OFF"), 3, offWide},
    {"CarA", QT_TRANSLATE_NOOP("Zelmar01", "Fonte A"), 5, on},
    {"CarB", QT_TRANSLATE_NOOP("Zelmar01", "Fonte B"), 5, off},
    {"cBlack", QT_TRANSLATE_NOOP("Zelmar01", "Couleur No"), 6, on},
    {"cRed", QT_TRANSLATE_NOOP("Zelmar01", "Couleur Rg"), 6, off},
    {"Left", QT_TRANSLATE_NOOP("Zelmar01", "Justification Gauche"), 8, on},
    {"Centr", QT_TRANSLATE_NOOP("Zelmar01", "Justification Centrée"), 9, on},
    {"Right", QT_TRANSLATE_NOOP("Zelmar01", "Justification Droite"), 10, on},
    {"SelTic", QT_TRANSLATE_NOOP("Zelmar01", "Ticket"), 1, right},
    {"SelJnl", QT_TRANSLATE_NOOP("Zelmar01", "Journal"), 2, right},
    {"SelFac", QT_TRANSLATE_NOOP("Zelmar01", "Facture"), 3, right},
    {"Cutter", QT_TRANSLATE_NOOP("Zelmar01", "Cutter"), 5, right},
    {"Tiroir", QT_TRANSLATE_NOOP("Zelmar01", "Tiroir"), 6, right},
    {"Eject", QT_TRANSLATE_NOOP("Zelmar01", "Eject"), justificationRow, right},
    {"Return", QT_TRANSLATE_NOOP("Zelmar01", "Return"), 8, right},
    {"Back", QT_TRANSLATE_NOOP("Zelmar01", "Back"), 9, right},
    {"Reset", QT_TRANSLATE_NOOP("Zelmar01", "Reset"), 10, right},
    {"Ini", QT_TRANSLATE_NOOP("Zelmar01", "Ini"), lastRow, right},
};
static_assert(std::size(places) == PrinterCodeCount);

struct TLabel
{
    const char *Text;
    int Row, Column;
};
constexpr TLabel labels[] = {
    {QT_TRANSLATE_NOOP("Zelmar01", "Bold"), 1, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Italic"), 2, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Underline"), 3, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Couleur"), 6, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "No"), 6, onLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Gauche"), 8, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Centrée"), 9, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Droite"), 10, rowLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "B"), 5, offLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Rg"), 6, offLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Ticket"), 1, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Journal"), 2, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Facture"), 3, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Cutter"), 5, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Tiroir"), 6, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Eject"), 7, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Return"), 8, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Back"), 9, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Reset"), 10, rightLabel},
    {QT_TRANSLATE_NOOP("Zelmar01", "Ini"), lastRow, rightLabel},
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

QLabel *makeLabel(const char *text)
{
    return new QLabel(QCoreApplication::translate("Zelmar01", text));
}

} // namespace

TPrnCodeGroup::TPrnCodeGroup(QWidget *parent) : QGroupBox(tr(" Codes de contrôle"), parent)
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
        box->setAccessibleName(QCoreApplication::translate("Zelmar01", place.Name));
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
    grid.addWidget(makeLabel(QT_TRANSLATE_NOOP("Zelmar01", "Fonte     A")), 5, rowLabel, 1, 2);
    grid.addWidget(makeLabel(QT_TRANSLATE_NOOP("Zelmar01", "Justification")), justificationRow, on,
                   Qt::AlignBottom);
    grid.addWidget(makeLabel(QT_TRANSLATE_NOOP("Zelmar01", "ON")), headRow, onWide, 1, 2, Qt::AlignHCenter);
    grid.addWidget(makeLabel(QT_TRANSLATE_NOOP("Zelmar01", "OFF")), headRow, offWide, 1, 2, Qt::AlignHCenter);
}

} // namespace Zelmar01
