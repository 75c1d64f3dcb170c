#include "ListsPage.h"

#include "ArticleTable.h"
#include "ui_ListsPage.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int many = 100'000, veryMany = 1'000'000;

const QLocale french(QLocale::French, QLocale::France);

} // namespace

ListsPage::ListsPage(ShopDatabase &shop, QWidget *parent)
    : QWidget(parent), m_shop(shop), m_articles(nullptr, &shop.Connection()),
      m_metals(nullptr, &shop.Connection()), m_list(nullptr, &shop.Connection()),
      m_ui(std::make_unique<Ui::ListsPage>())
{
    m_ui->setupUi(this);
    setObjectName(u"lists"_s);
    setFocusProxy(m_ui->findArticle);
    m_articles.setCommandText(GridPanel::ArticlesText());
    m_metals.setCommandText(u"select METAL_ID, LIBELLE from metal order by LIBELLE"_s);
    m_list.setCommandText(u"select ARTICLE_ID, NOM from article order by NOM"_s);
    m_articleSource.setDataSet(&m_articles);
    m_metalSource.setDataSet(&m_metals);
    m_shown.setDataSet(&m_articles);
    m_ui->articleMetal->setDataSource(&m_shown);
    m_ui->articleMetal->setListSource(&m_metalSource);
    m_ui->findArticle->lineEdit()->setPlaceholderText(u"Nom de l'article"_s);
    m_ui->gridPanel->Use(m_articleSource);
    connectButtons();
    addVolumeMenu();

    connect(m_ui->findArticle, &QComboBox::activated, this,
            [this] { ShowingExceptions([this] { goToArticle(); }); });
    connect(m_ui->articleMetal, &TDBComboBoxEditFk::OnChgtID, this,
            [this](const TDBComboBoxEditFk *, qint64 id) {
                m_ui->listsTold->setText(id == 0 ? u"Sans métal"_s : u"Métal choisi : n° %1"_s.arg(id));
            });
    connect(m_ui->choice, &TCheckListBoxFK::OnClickCheck, this, &ListsPage::showChoice);
    connect(m_ui->gridPanel, &GridPanel::ShownChanged, this,
            [this] { m_shown.setDataSet(&m_ui->gridPanel->Shown()); });
    connect(&m_shown, &TDataSource::OnDataChange, this, &ListsPage::showArticle);
    connect(&m_shown, &TDataSource::OnStateChange, this, &ListsPage::showArticle);
}

ListsPage::~ListsPage() = default;

void ListsPage::connectButtons()
{
    const std::pair<QPushButton *, std::function<void()>> works[] = {
        {m_ui->priorArticle, [this] { m_shown.DataSet()->Prior(); }},
        {m_ui->nextArticle, [this] { m_shown.DataSet()->Next(); }},
        {m_ui->saveArticle, [this] { m_shown.DataSet()->Post(); }},
        {m_ui->cancelArticle, [this] { m_shown.DataSet()->Cancel(); }},
        {m_ui->checkAll,
         [this] {
             m_ui->choice->ToutSelectionner();
             showChoice();
         }},
        {m_ui->checkNone, [this] {
             m_ui->choice->ToutDeselectionner();
             showChoice();
         }}};
    for (const auto &[button, work] : works)
        connect(button, &QPushButton::clicked, this, [work = work] { ShowingExceptions(work); });
}

void ListsPage::addVolumeMenu()
{
    auto *menu = new QMenu(m_ui->volume);
    for (const int rows : {many, veryMany})
        menu->addAction(u"Remplir de %1 lignes"_s.arg(french.toString(rows)), this,
                        [this, rows] { ShowingExceptions([&] { tryMany(rows); }); });
    menu->addAction(u"Articles du magasin"_s, this, [this] { ShowingExceptions([this] { load(); }); });
    m_ui->volume->setMenu(menu);
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
    m_ui->gridPanel->ShowArticles();
    m_ui->findArticle->RemplirListe(m_list, true);
    m_ui->choice->RemplirListe(m_list);
    m_ui->listsTold->clear();
    showArticle();
    showChoice();
}

void ListsPage::goToArticle()
{
    m_ui->gridPanel->Shown().Locate(u"ARTICLE_ID"_s, m_ui->findArticle->DonnerCle());
}

void ListsPage::showArticle()
{
    const auto &rows = *m_shown.DataSet();
    const bool isEdited = rows.Active() && rows.State() != dsBrowse;
    m_ui->saveArticle->setEnabled(isEdited);
    m_ui->cancelArticle->setEnabled(isEdited);
    m_ui->articleName->setText(rows.Active() ? rows.FieldByName(u"REFERENCE"_s).AsString() + u"   "_s +
                                                   rows.FieldByName(u"NOM"_s).AsString()
                                             : QString());
}

void ListsPage::showChoice()
{
    auto keys = m_ui->choice->ListeDesSelectionnes(u","_s);
    keys.chop(1); // the last separator
    const int count = m_ui->choice->NbCaseCoche();
    m_ui->condition->setText(count == 0          ? u"Aucun article coché"_s
                             : keys.size() < 200 ? u"where ARTICLE_ID in (%1)"_s.arg(keys)
                                                 : u"%1 articles cochés"_s.arg(french.toString(count)));
}

void ListsPage::tryMany(int rows)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = qScopeGuard(&QGuiApplication::restoreOverrideCursor);
    QList<int> keys;
    QStringList texts, names;
    for (int row = 1; row <= rows; ++row) {
        keys << row;
        texts << QString::number(row);
        names << u"Article d'essai n° %1"_s.arg(row);
    }
    QElapsedTimer clock;
    clock.start();
    m_ui->findArticle->RemplirListe(texts, names);
    m_ui->choice->RemplirListe(keys, names);
    const auto lists = clock.restart();
    m_ui->gridPanel->ShowMany(rows);
    m_ui->listsTold->setText(u"%1 lignes : les deux listes remplies en %2 ms, la grille remplie en %3 ms."_s
                                 .arg(french.toString(rows))
                                 .arg(lists)
                                 .arg(clock.elapsed()));
    showChoice();
}

} // namespace Shop
