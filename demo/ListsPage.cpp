#include "ListsPage.h"

#include "ArticleTable.h"
#include "GridPanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QElapsedTimer>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int many = 100'000, veryMany = 1'000'000;

const QLocale french(QLocale::French, QLocale::France);

} // namespace

ListsPage::ListsPage(ShopDatabase &shop, QWidget *parent)
    : QWidget(parent), m_shop(shop), m_articles(nullptr, &shop.Connection()),
      m_metals(nullptr, &shop.Connection()), m_list(nullptr, &shop.Connection()), m_told(new QLabel)
{
    setObjectName(u"lists"_s);
    m_articles.setCommandText(GridPanel::ArticlesText());
    m_metals.setCommandText(u"select METAL_ID, LIBELLE from metal order by LIBELLE"_s);
    m_list.setCommandText(u"select ARTICLE_ID, NOM from article order by NOM"_s);
    m_articleSource.setDataSet(&m_articles);
    m_metalSource.setDataSet(&m_metals);

    auto *article = makeArticle();
    auto *choice = makeChoice();
    m_grid = new GridPanel(shop, m_articleSource);
    m_told->setObjectName(u"listsTold"_s);
    m_told->setWordWrap(true);

    auto *volume = new QPushButton(u"&Essai de volume"_s);
    volume->setObjectName(u"volume"_s);
    auto *menu = new QMenu(volume);
    for (const int rows : {many, veryMany})
        menu->addAction(u"Remplir de %1 lignes"_s.arg(french.toString(rows)), this,
                        [this, rows] { ShowingExceptions([&] { tryMany(rows); }); });
    menu->addAction(u"Articles du magasin"_s, this, [this] { ShowingExceptions([this] { load(); }); });
    volume->setMenu(menu);

    auto *layout = new QGridLayout(this);
    layout->addWidget(article, 0, 0);
    layout->addWidget(choice, 0, 1, 2, 1);
    layout->addWidget(m_grid, 2, 0, 1, 2);
    layout->addWidget(volume, 3, 1, Qt::AlignRight);
    layout->addWidget(m_told, 3, 0);
    layout->setRowStretch(1, 1);
    layout->setRowStretch(2, 2);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    setFocusProxy(m_find);
}

QGroupBox *ListsPage::makeArticle()
{
    auto *group = new QGroupBox(u"Article"_s);
    m_find = new TComboBoxFk;
    m_find->setObjectName(u"findArticle"_s);
    m_find->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_find->lineEdit()->setPlaceholderText(u"Nom de l'article"_s);
    m_name = new QLabel;
    m_name->setObjectName(u"articleName"_s);
    m_name->setTextFormat(Qt::PlainText);
    m_metal = new TDBComboBoxEditFk;
    m_metal->setObjectName(u"articleMetal"_s);
    m_metal->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_metal->setDataField(u"METAL_ID"_s);
    m_metal->setDataSource(&m_articleSource);
    m_metal->setListSource(&m_metalSource);

    auto *form = new QFormLayout(group);
    form->addRow(u"Aller &à :"_s, m_find);
    form->addRow(u"Article :"_s, m_name);
    form->addRow(u"&Métal :"_s, m_metal);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(makeButton(u"priorArticle"_s, u"&Précédent"_s, [this] { m_articles.Prior(); }));
    buttons->addWidget(makeButton(u"nextArticle"_s, u"&Suivant"_s, [this] { m_articles.Next(); }));
    buttons->addStretch(1);
    m_save = makeButton(u"saveArticle"_s, u"&Enregistrer"_s, [this] { m_articles.Post(); });
    m_cancel = makeButton(u"cancelArticle"_s, u"A&nnuler"_s, [this] { m_articles.Cancel(); });
    buttons->addWidget(m_save);
    buttons->addWidget(m_cancel);
    form->addRow(buttons);

    connect(m_find, &QComboBox::activated, this, [this] { ShowingExceptions([this] { goToArticle(); }); });
    connect(&m_articleSource, &TDataSource::OnDataChange, this, &ListsPage::showArticle);
    connect(&m_articleSource, &TDataSource::OnStateChange, this, &ListsPage::showArticle);
    connect(m_metal, &TDBComboBoxEditFk::OnChgtID, this, [this](const TDBComboBoxEditFk *, qint64 id) {
        m_told->setText(id == 0 ? u"Sans métal"_s : u"Métal choisi : n° %1"_s.arg(id));
    });
    return group;
}

QGroupBox *ListsPage::makeChoice()
{
    auto *group = new QGroupBox(u"Choix d'articles"_s);
    m_choice = new TCheckListBoxFK;
    m_choice->setObjectName(u"choice"_s);
    m_choice->setAccessibleName(u"Articles à choisir"_s);
    m_condition = new QLabel;
    m_condition->setObjectName(u"condition"_s);
    m_condition->setWordWrap(true);
    m_condition->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *layout = new QGridLayout(group);
    layout->addWidget(m_choice, 0, 0, 1, 2);
    layout->addWidget(makeButton(u"checkAll"_s, u"&Tout cocher"_s,
                                 [this] {
                                     m_choice->ToutSelectionner();
                                     showChoice();
                                 }),
                      1, 0);
    layout->addWidget(makeButton(u"checkNone"_s, u"Tout &décocher"_s,
                                 [this] {
                                     m_choice->ToutDeselectionner();
                                     showChoice();
                                 }),
                      1, 1);
    layout->addWidget(m_condition, 2, 0, 1, 2);
    connect(m_choice, &TCheckListBoxFK::OnClickCheck, this, &ListsPage::showChoice);
    return group;
}

QPushButton *ListsPage::makeButton(const QString &name, const QString &text,
                                   const std::function<void()> &work)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [work] { ShowingExceptions(work); });
    return button;
}

void ListsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!std::exchange(m_isLoaded, true))
        ShowingExceptions([this] { load(); });
}

void ListsPage::load()
{
    m_shop.Require(MetalTable());
    m_shop.Require(ArticleTable());
    m_metals.Open();
    m_grid->ShowArticles();
    m_find->RemplirListe(m_list, true);
    m_choice->RemplirListe(m_list);
    m_told->clear();
    showArticle();
    showChoice();
}

void ListsPage::goToArticle()
{
    m_articles.Locate(u"ARTICLE_ID"_s, m_find->DonnerCle());
}

void ListsPage::showArticle()
{
    const bool isOpen = m_articles.Active();
    const bool isEdited = isOpen && m_articles.State() != dsBrowse;
    m_save->setEnabled(isEdited);
    m_cancel->setEnabled(isEdited);
    m_name->setText(isOpen ? m_articles.FieldByName(u"REFERENCE"_s).AsString() + u"   "_s +
                                 m_articles.FieldByName(u"NOM"_s).AsString()
                           : QString());
}

void ListsPage::showChoice()
{
    auto keys = m_choice->ListeDesSelectionnes(u","_s);
    keys.chop(1); // the last separator
    const int count = m_choice->NbCaseCoche();
    m_condition->setText(count == 0          ? u"Aucun article coché"_s
                         : keys.size() < 200 ? u"where ARTICLE_ID in (%1)"_s.arg(keys)
                                             : u"%1 articles cochés"_s.arg(french.toString(count)));
}

void ListsPage::tryMany(int rows)
{
    QList<int> keys;
    QStringList texts, names;
    for (int row = 1; row <= rows; ++row) {
        keys << row;
        texts << QString::number(row);
        names << u"Article d'essai n° %1"_s.arg(row);
    }
    QElapsedTimer clock;
    clock.start();
    m_find->RemplirListe(texts, names);
    m_choice->RemplirListe(keys, names);
    const auto lists = clock.restart();
    m_grid->ShowMany(rows);
    m_told->setText(u"%1 lignes : les deux listes remplies en %2 ms, la grille lue et remplie en %3 ms."_s
                        .arg(french.toString(rows))
                        .arg(lists)
                        .arg(clock.elapsed()));
    showChoice();
}

} // namespace Shop
