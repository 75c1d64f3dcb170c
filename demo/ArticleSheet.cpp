#include "ArticleSheet.h"

#include "ArticleTable.h"
#include "ui_ArticleSheet.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QBuffer>
#include <QDate>
#include <QPainter>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

// A ring with a stone, as a photographer of the shop would have it in a JPEG file.
QByteArray photoOf(int article)
{
    QImage photo(280, 180, QImage::Format_RGB32);
    QLinearGradient ground(0, 0, 0, photo.height());
    ground.setColorAt(0, QColor(0xf4, 0xf0, 0xe8));
    ground.setColorAt(1, QColor(0xd8, 0xcf, 0xbf));
    QPainter painter(&photo);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(photo.rect(), ground);
    painter.setPen(QPen(QColor(0xb8, 0x8a, 0x2a), 11));
    painter.drawEllipse(QPoint(140, 108), 52, 52);
    painter.setPen(QPen(QColor(0xe8, 0xc5, 0x6a), 3));
    painter.drawArc(QRect(84, 52, 112, 112), 40 * 16, 110 * 16);
    const auto stone = QColor::fromHsv(article * 67 % 360, 190, 190);
    painter.setPen(QPen(stone.darker(140), 2));
    painter.setBrush(stone);
    painter.drawPolygon(QPolygon({{140, 62}, {118, 40}, {126, 26}, {154, 26}, {162, 40}}));
    painter.setBrush(stone.lighter(140));
    painter.drawPolygon(QPolygon({{140, 62}, {132, 40}, {148, 40}}));
    painter.end();
    QByteArray bytes;
    QBuffer file(&bytes);
    file.open(QIODevice::WriteOnly);
    photo.save(&file, "JPEG", 88);
    return bytes;
}

QString bytesType(TEngine engine)
{
    return engine == enPostgreSQL ? u"bytea"_s : engine == enSQLServer ? u"varbinary(max)"_s : u"blob"_s;
}

TShopTable sheetTable(TEngine engine)
{
    return {u"fiche"_s,
            u"create table fiche (ARTICLE_ID integer primary key, REFERENCE varchar(10) not null, "
            "NOM varchar(60) not null, PRIX decimal(10,2) not null, METAL_ID integer, ACHAT date, "
            "STOCK integer, VITRINE "_s +
                (engine == enSQLServer ? u"bit"_s : u"boolean"_s) + u", NOTE varchar(200), PHOTO "_s +
                bytesType(engine) + u')',
            [](TConnection &connection) {
                connection.Execute(u"insert into fiche (ARTICLE_ID, REFERENCE, NOM, PRIX, METAL_ID) "
                                   "select ARTICLE_ID, REFERENCE, NOM, PRIX, METAL_ID from article"_s);
                TQuery articles(nullptr, &connection);
                articles.setCommandText(u"select ARTICLE_ID from fiche order by ARTICLE_ID"_s);
                articles.Open();
                for (; !articles.Eof(); articles.Next()) {
                    const auto id = static_cast<int>(articles.FieldByName(u"ARTICLE_ID"_s).AsInteger());
                    connection.Execute(
                        u"update fiche set ACHAT = ?, STOCK = ?, VITRINE = ?, NOTE = ?, PHOTO = ? "
                        "where ARTICLE_ID = ?"_s,
                        {QDate(2024, 1, 8).addDays(9 * id), 1 + id % 4, id % 3 != 0,
                         u"Vérifier le serti avant la mise en vitrine."_s, photoOf(id), id});
                }
            }};
}

} // namespace

ArticleSheet::ArticleSheet(QWidget *parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::ArticleSheet>())
{
    m_ui->setupUi(this);
    m_ui->sheetNOTE->setMinimumHeight(m_ui->sheetNOTE->fontMetrics().lineSpacing() * 4);
    m_articles.setCommandText(u"select * from fiche order by REFERENCE"_s);
    m_metals.setCommandText(u"select METAL_ID, LIBELLE from metal order by LIBELLE"_s);
    m_source.setDataSet(&m_articles);
    m_metalSource.setDataSet(&m_metals);
    bind();

    const std::pair<QPushButton *, void (TDataSet::*)()> works[] = {{m_ui->sheetPrior, &TDataSet::Prior},
                                                                    {m_ui->sheetNext, &TDataSet::Next},
                                                                    {m_ui->sheetCancel, &TDataSet::Cancel},
                                                                    {m_ui->sheetPost, &TDataSet::Post}};
    for (const auto &[button, work] : works)
        connect(button, &QPushButton::clicked, this,
                [this, work = work] { ShowingExceptions([this, work] { (m_articles.*work)(); }); });
    connect(&m_source, &TDataSource::OnStateChange, this, &ArticleSheet::follow);
    connect(&m_source, &TDataSource::OnDataChange, this, &ArticleSheet::follow);
    follow();
}

ArticleSheet::~ArticleSheet() = default;

// The form names the fields.
void ArticleSheet::bind()
{
    const auto toSource = [this](auto *...editors) { (editors->setDataSource(&m_source), ...); };
    toSource(m_ui->sheetREFERENCE, m_ui->sheetNOM, m_ui->sheetMETAL_ID, m_ui->sheetPRIX, m_ui->sheetACHAT,
             m_ui->sheetSTOCK, m_ui->sheetVITRINE, m_ui->sheetNOTE, m_ui->sheetPHOTO);
    m_ui->sheetMETAL_ID->setListSource(&m_metalSource);
}

void ArticleSheet::Load(ShopDatabase &shop)
{
    auto &connection = shop.Connection();
    shop.Require(MetalTable());
    shop.Require(ArticleTable());
    shop.Require(sheetTable(connection.Engine()));
    m_metals.setConnection(&connection);
    m_articles.setConnection(&connection);
    m_metals.Open();
    m_articles.Open();
}

void ArticleSheet::follow()
{
    const bool isEditing = m_source.State() == dsEdit || m_source.State() == dsInsert;
    m_ui->sheetPost->setEnabled(isEditing);
    m_ui->sheetCancel->setEnabled(isEditing);
    m_ui->sheetPlace->setText(m_articles.Active()
                                  ? u"%1 sur %2"_s.arg(m_articles.RecNo()).arg(m_articles.RecordCount())
                                  : QString());
}

} // namespace Shop
