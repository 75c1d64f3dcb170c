#include "LevelPanel.h"

#include "LargeText.h"
#include "ui_LevelPanel.h"

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

LevelPanel::LevelPanel(QWidget *parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::LevelPanel>())
{
    m_ui->setupUi(this);
    MakeLarge(*m_ui->levelTitle, 1.5);
    // The page does not move when the next long label takes one line or two.
    m_ui->longLabel->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    for (auto *name : {m_ui->levelCodeName, m_ui->longLabelName, m_ui->levelShortLabelName, m_ui->belowName})
        name->setForegroundRole(QPalette::PlaceholderText);
}

LevelPanel::~LevelPanel() = default;

void LevelPanel::ShowLevel(const TDescrTree *tree, TDescrTree::TNode node)
{
    const bool isNode = tree && node != TDescrTree::None;
    const bool isLevel = isNode && node != TDescrTree::Root;
    const auto show = [](QLabel *label, const QString &text) {
        label->setText(text.isEmpty() ? nothing : text);
    };
    show(m_ui->levelTitle, !isNode ? QString() : isLevel ? tree->Libelle(node) : tree->RootText());
    show(m_ui->levelCode, isLevel ? tree->Code(node) : QString());
    show(m_ui->longLabel, isLevel ? tree->LibLong(node) : QString());
    show(m_ui->levelShortLabel, isLevel ? tree->LibCourt(node) : QString());
    show(m_ui->below, isNode ? belowText(*tree, node) : QString());
}

} // namespace Shop
