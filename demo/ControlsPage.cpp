#include "ControlsPage.h"

#include "ArticleTable.h"

#include <Zelmar01/controls/DateTimePickerPlus.h>
#include <Zelmar01/controls/NumEcran.h>
#include <Zelmar01/controls/TimeEdit.h>
#include <Zelmar01/controls/zmDateEdit.h>
#include <Zelmar01/controls/zmLabel.h>
#include <Zelmar01/controls/zmPickEdit.h>
#include <Zelmar01/core/ExceptionDisplay.h>

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPushButton>

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
      m_sheetOfArticle(new ArticleSheet(shop)), m_told(new QLabel)
{
    setObjectName(u"controls"_s);
    setLocale(french);
    m_articles.setCommandText(u"select ARTICLE_ID, NOM, REFERENCE from article order by NOM"_s);

    auto *title = new TzmLabel;
    title->setText(u"Bijoux & services"_s);
    auto *layout = new QGridLayout(this);
    layout->addWidget(title, 0, 0);
    layout->addWidget(makeLinks(), 1, 0);
    layout->addWidget(makeGauges(), 2, 0);
    layout->addWidget(makeAppointment(), 3, 0);
    layout->addWidget(m_sheetOfArticle, 0, 1, 4, 1);
    layout->addWidget(makeFoot(), 4, 0, 1, 2);
    layout->setRowStretch(4, 1);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    setFocusProxy(m_find);
}

TLabelURL *ControlsPage::makeLink(const QString &name, const QString &caption, TURLType type)
{
    auto *link = new TLabelURL;
    link->setObjectName(name);
    link->setText(caption);
    link->setURLType(type);
    return link;
}

QGroupBox *ControlsPage::makeLinks()
{
    auto *group = new QGroupBox(u"Liens d'un article"_s);
    m_find = new TComboBoxFk;
    m_find->setObjectName(u"linkedArticle"_s);
    m_find->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_sheet = makeLink(u"articleSheet"_s, u"&Fiche chez le fournisseur"_s, utHttp);
    m_order = makeLink(u"articleOrder"_s, u"&Commander à l'atelier"_s, utMailTo);
    m_folder = makeLink(u"shopFolder"_s, u"&Dossier du magasin"_s, utFile);

    auto *form = new QFormLayout(group);
    form->addRow(u"&Article :"_s, m_find);
    for (auto *link : {m_sheet, m_order, m_folder})
        form->addRow(link);
    connect(m_find, &QComboBox::currentIndexChanged, this, [this] { showArticle(); });
    return group;
}

QGroupBox *ControlsPage::makeGauges()
{
    auto *group = new QGroupBox(u"Étiquettes"_s);
    m_gauge = new TzmGauge;
    m_gauge->setObjectName(u"gauge"_s);
    m_gauge->setAccessibleName(u"Étiquettes contrôlées"_s);
    m_upright = new TzmGauge;
    m_upright->setObjectName(u"uprightGauge"_s);
    m_upright->setAccessibleName(u"Étiquettes contrôlées, en hauteur"_s);
    m_upright->setKind(gkVerticalBar);
    m_upright->setFixedWidth(72);
    m_upright->setMinimumHeight(110);
    m_upright->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    m_told->setObjectName(u"controlsTold"_s);
    m_told->setWordWrap(true);
    auto *start = new QPushButton(u"Contrôler %1 étiq&uettes"_s.arg(french.toString(tickets)));
    start->setObjectName(u"checkTickets"_s);
    auto *text = new QCheckBox(u"&Pourcentage"_s);
    text->setObjectName(u"gaugeText"_s);
    text->setChecked(true);

    auto *layout = new QGridLayout(group);
    layout->addWidget(m_gauge, 0, 0, 1, 2);
    layout->addWidget(start, 1, 0);
    layout->addWidget(text, 1, 1);
    layout->addWidget(m_told, 2, 0, 1, 2);
    layout->addWidget(m_upright, 0, 2, 3, 1);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(2, 1);
    connect(start, &QPushButton::clicked, this, [this] { ShowingExceptions([this] { checkTickets(); }); });
    connect(text, &QCheckBox::toggled, this, [this](bool shown) {
        m_gauge->setShowText(shown);
        m_upright->setShowText(shown);
    });
    return group;
}

QGroupBox *ControlsPage::makeAppointment()
{
    auto *group = new QGroupBox(u"Rendez-vous"_s);
    auto *day = new TDateTimePickerPlus;
    day->setObjectName(u"appointmentDay"_s);
    day->setDate(QDate(2024, 3, 21));
    auto *hour = new tzmTimeEdit;
    hour->setObjectName(u"appointmentHour"_s);
    hour->setTime(QTime(14, 30));
    auto *feast = new tzmDateEditJourMois;
    feast->setObjectName(u"feast"_s);
    feast->setDate(QDate(2024, 2, 29));
    auto *place = new TzmPickEdit;
    place->setObjectName(u"appointmentPlace"_s);
    place->addItems({u"Comptoir"_s, u"Salon"_s, u"Atelier"_s});

    auto *layout = new QGridLayout(group);
    const auto add = [&](int row, int column, const QString &text, QWidget *editor) {
        auto *label = new QLabel(text);
        label->setBuddy(editor);
        layout->addWidget(label, row, column);
        layout->addWidget(editor, row, column + 1);
    };
    add(0, 0, u"Le :"_s, day);
    add(0, 2, u"à :"_s, hour);
    add(1, 0, u"Au :"_s, place);
    add(1, 2, u"Fête :"_s, feast);
    layout->setColumnStretch(1, 1);
    layout->setColumnStretch(3, 1);
    return group;
}

QWidget *ControlsPage::makeFoot()
{
    // Without a layout, so that the number finds its corner by itself.
    auto *foot = new QWidget;
    foot->setMinimumHeight(20);
    auto *number = new Tzm_NumEcran(foot);
    number->setText(u"E0600"_s);
    return foot;
}

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
    m_sheetOfArticle->Load();
    m_articles.Open();
    m_find->RemplirListe(m_articles, false);
    m_find->setCurrentIndex(0);
    m_folder->setURL(m_shop.Folder());
    showArticle();
}

void ControlsPage::showArticle()
{
    if (!m_articles.Locate(u"ARTICLE_ID"_s, m_find->DonnerCle()))
        return;
    const auto reference = m_articles.FieldByName(u"REFERENCE"_s).AsString();
    m_sheet->setURL(u"www.example.com/articles/"_s + reference);
    m_order->setURL(u"atelier@example.com?subject="_s + reference);
}

void ControlsPage::checkTickets()
{
    // While messages are taken the button may start this once more: the older run then ends here.
    const int start = ++m_starts;
    const QPointer<ControlsPage> self = this;
    QStringList references;
    for (m_articles.First(); !m_articles.Eof(); m_articles.Next())
        references << m_articles.FieldByName(u"REFERENCE"_s).AsString();
    ParamJauge(m_gauge, tickets);
    QList<int> figures(10);
    for (int piece = 0; self && start == m_starts && piece < tickets; ++piece) {
        const int figure = checkFigure(references[piece % references.size()], piece);
        ++figures[figure];
        m_upright->SetProgress(m_gauge->GetPercentDone());
        AfficherJauge(m_gauge);
    }
    if (!self || start != m_starts)
        return;
    FinirProgressBar(m_gauge);
    m_upright->SetProgress(100);
    m_told->setText(u"%1 étiquettes contrôlées, dont %2 avec le chiffre 0."_s.arg(
        french.toString(tickets), french.toString(figures[0])));
}

} // namespace Shop
