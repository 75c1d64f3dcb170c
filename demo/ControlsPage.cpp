#include "ControlsPage.h"

#include "ArticleTable.h"
#include "ui_ControlsPage.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QLocale>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int tickets = 200'000;

const QLocale french(QLocale::French, QLocale::France);

// The figure that a ticket carries to tell a misread one.
int checkFigure(const QString &reference, int piece)
{
    int sum = 0, weight = 1;
    for (const auto c : reference + QString::number(piece)) {
        sum += c.unicode() * weight;
        weight = weight == 1 ? 3 : 1;
    }
    return (10 - sum % 10) % 10;
}

} // namespace

ControlsPage::ControlsPage(ShopDatabase &shop, QWidget *parent)
    : QWidget(parent), m_shop(shop), m_articles(nullptr, &shop.Connection()),
      m_ui(std::make_unique<Ui::ControlsPage>())
{
    m_ui->setupUi(this);
    setObjectName(u"controls"_s);
    setFocusProxy(m_ui->linkedArticle);
    m_articles.setCommandText(u"select ARTICLE_ID, NOM, REFERENCE from article order by NOM"_s);
    m_ui->checkTickets->setText(u"Contrôler %1 étiq&uettes"_s.arg(french.toString(tickets)));
    m_ui->feast->setDate(QDate(2024, 2, 29));

    connect(m_ui->linkedArticle, &QComboBox::currentIndexChanged, this, [this] { showArticle(); });
    connect(m_ui->checkTickets, &QPushButton::clicked, this,
            [this] { ShowingExceptions([this] { checkTickets(); }); });
    for (auto *gauge : {m_ui->gauge, m_ui->uprightGauge})
        connect(m_ui->gaugeText, &QCheckBox::toggled, gauge, &TzmGauge::setShowText);
}

ControlsPage::~ControlsPage() = default;

void ControlsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!std::exchange(m_isLoaded, true))
        ShowingExceptions([this] { load(); });
}

void ControlsPage::load()
{
    m_shop.Require(MetalTable());
    m_shop.Require(ArticleTable());
    m_ui->sheet->Load(m_shop);
    m_articles.Open();
    m_ui->linkedArticle->RemplirListe(m_articles, false);
    m_ui->linkedArticle->setCurrentIndex(0);
    m_ui->shopFolder->setURL(m_shop.Folder());
    showArticle();
}

void ControlsPage::showArticle()
{
    if (!m_articles.Locate(u"ARTICLE_ID"_s, m_ui->linkedArticle->DonnerCle()))
        return;
    const auto reference = m_articles.FieldByName(u"REFERENCE"_s).AsString();
    m_ui->articleSheet->setURL(u"www.example.com/articles/"_s + reference);
    m_ui->articleOrder->setURL(u"atelier@example.com?subject="_s + reference);
}

void ControlsPage::checkTickets()
{
    // While messages are taken the button may start this once more: the older run then ends here.
    const int start = ++m_starts;
    const QPointer<ControlsPage> self = this;
    QStringList references;
    for (m_articles.First(); !m_articles.Eof(); m_articles.Next())
        references << m_articles.FieldByName(u"REFERENCE"_s).AsString();
    ParamJauge(m_ui->gauge, tickets);
    QList<int> figures(10);
    for (int piece = 0; self && start == m_starts && piece < tickets; ++piece) {
        const int figure = checkFigure(references[piece % references.size()], piece);
        ++figures[figure];
        m_ui->uprightGauge->SetProgress(m_ui->gauge->GetPercentDone());
        AfficherJauge(m_ui->gauge);
    }
    if (!self || start != m_starts)
        return;
    FinirProgressBar(m_ui->gauge);
    m_ui->uprightGauge->SetProgress(100);
    m_ui->controlsTold->setText(u"%1 étiquettes contrôlées, dont %2 avec le chiffre 0."_s.arg(
        french.toString(tickets), french.toString(figures[0])));
}

} // namespace Shop
