#include "LevelPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

const QString nothing = u"—"_s;

std::size_t countBelow(const TDescrTree &tree, TDescrTree::TNode node)
{
    if (node == TDescrTree::Root)
        return tree.Count() - 1;
    auto count = tree.ChildCount(node);
    for (std::size_t row = 0; row < tree.ChildCount(node); ++row)
        count += countBelow(tree, tree.Child(node, row));
    return count;
}

QString belowText(const TDescrTree &tree, TDescrTree::TNode node)
{
    const auto direct = tree.ChildCount(node);
    const auto all = countBelow(tree, node);
    if (all == 0)
        return u"aucun niveau"_s;
    const QLocale french(QLocale::French);
    auto text = french.toString(static_cast<qulonglong>(all)) + (all == 1 ? u" niveau"_s : u" niveaux"_s);
    if (direct < all)
        text += u", dont %1 directement"_s.arg(french.toString(static_cast<qulonglong>(direct)));
    return text;
}

} // namespace

LevelPanel::LevelPanel(QWidget *parent) : QGroupBox(u"Niveau sélectionné"_s, parent), m_title(new QLabel)
{
    auto font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    font.setBold(true);
    m_title->setFont(font);
    m_title->setObjectName(u"title"_s);
    m_title->setAccessibleName(u"Libellé"_s);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setWordWrap(true);

    auto *rows = new QGridLayout(this);
    rows->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    rows->setVerticalSpacing(fontMetrics().height() / 2);
    rows->setColumnStretch(1, 1);
    rows->addWidget(m_title, 0, 0, 1, 2);
    m_code = addRow(*rows, u"Code"_s, u"levelCode"_s);
    m_longLabel = addRow(*rows, u"Libellé long"_s, u"longLabel"_s);
    // The page does not move when the next long label takes one line or two.
    m_longLabel->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    m_shortLabel = addRow(*rows, u"Libellé court"_s, u"levelShortLabel"_s);
    m_below = addRow(*rows, u"En dessous"_s, u"below"_s);
}

QLabel *LevelPanel::addRow(QGridLayout &rows, const QString &title, const QString &name)
{
    auto *label = new QLabel(title);
    label->setForegroundRole(QPalette::PlaceholderText);
    auto *value = new QLabel(nothing);
    value->setObjectName(name);
    value->setAccessibleName(title);
    value->setTextFormat(Qt::PlainText);
    value->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const int row = rows.rowCount();
    rows.addWidget(label, row, 0, Qt::AlignTop);
    rows.addWidget(value, row, 1);
    return value;
}

void LevelPanel::ShowLevel(const TDescrTree *tree, TDescrTree::TNode node)
{
    const bool isNode = tree && node != TDescrTree::None;
    const bool isLevel = isNode && node != TDescrTree::Root;
    const auto show = [](QLabel *label, const QString &text) {
        label->setText(text.isEmpty() ? nothing : text);
    };
    show(m_title, !isNode ? QString() : isLevel ? tree->Libelle(node) : tree->RootText());
    show(m_code, isLevel ? tree->Code(node) : QString());
    show(m_longLabel, isLevel ? tree->LibLong(node) : QString());
    show(m_shortLabel, isLevel ? tree->LibCourt(node) : QString());
    show(m_below, isNode ? belowText(*tree, node) : QString());
}

} // namespace Shop
