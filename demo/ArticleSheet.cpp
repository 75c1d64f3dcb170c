#include "ArticleSheet.h"

#include "ArticleTable.h"

#include <Zelmar01/controls/zmCheckBox.h>
#include <Zelmar01/controls/zmCurrency.h>
#include <Zelmar01/controls/zmDateEdit.h>
#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/controls/zmLookUpEd.h>
#include <Zelmar01/controls/zmMemo.h>
#include <Zelmar01/controls/zmSpinEdit.h>
#include <Zelmar01/controls/zmTextEdit.h>
#include <Zelmar01/core/ExceptionDisplay.h>

#include <QBuffer>
#include <QDate>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

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

ArticleSheet::ArticleSheet(ShopDatabase &shop, QWidget *parent)
    : QGroupBox(u"Fiche d'un article"_s, parent), m_shop(shop), m_articles(nullptr, &shop.Connection()),
      m_metals(nullptr, &shop.Connection()), m_place(new QLabel), m_post(new QPushButton(u"&Enregistrer"_s)),
      m_cancel(new QPushButton(u"Annuler"_s))
{
    m_articles.setCommandText(u"select * from fiche order by REFERENCE"_s);
    m_metals.setCommandText(u"select METAL_ID, LIBELLE from metal order by LIBELLE"_s);
    m_source.setDataSet(&m_articles);
    m_metalSource.setDataSet(&m_metals);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeEditors(), 1);
    layout->addWidget(makeButtons());
    connect(&m_source, &TDataSource::OnStateChange, this, &ArticleSheet::follow);
    connect(&m_source, &TDataSource::OnDataChange, this, &ArticleSheet::follow);
    follow();
}

void ArticleSheet::Load()
{
    m_shop.Require(MetalTable());
    m_shop.Require(ArticleTable());
    m_shop.Require(sheetTable(m_shop.Connection().Engine()));
    m_metals.Open();
    m_articles.Open();
}

template<class Editor>
Editor *ArticleSheet::bind(const QString &field)
{
    auto *editor = new Editor;
    editor->setObjectName(u"sheet"_s + field);
    editor->setDataField(field);
    editor->setDataSource(&m_source);
    return editor;
}

QWidget *ArticleSheet::makeEditors()
{
    auto *metal = bind<TzmDBLookupEdit>(u"METAL_ID"_s);
    metal->setListSource(&m_metalSource);
    auto *shown = bind<TzmDBCheckEdit>(u"VITRINE"_s);
    shown->setText(u"En &vitrine"_s);
    shown->setTransparent(true);
    auto *stock = bind<TzmDBSpinEdit>(u"STOCK"_s);
    stock->setMaxValue(999);
    auto *note = bind<TzmDBMemo>(u"NOTE"_s);
    note->setMinimumHeight(note->fontMetrics().lineSpacing() * 4);
    auto *photo = bind<TzmDBImage>(u"PHOTO"_s);
    photo->setAccessibleName(u"Photo de l'article"_s);
    photo->setFixedSize(200, 128);

    auto *editors = new QWidget;
    auto *form = new QFormLayout(editors);
    form->setContentsMargins({});
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(u"&Référence :"_s, bind<TzmDBEdit>(u"REFERENCE"_s));
    form->addRow(u"&Nom :"_s, bind<TzmDBEdit>(u"NOM"_s));
    form->addRow(u"&Métal :"_s, metal);
    form->addRow(u"Pri&x :"_s, bind<TzmDBCurrencyEdit>(u"PRIX"_s));
    form->addRow(u"Acheté &le :"_s, bind<tzmDBDateEdit>(u"ACHAT"_s));
    form->addRow(u"&Stock :"_s, stock);
    form->addRow(QString(), shown);
    form->addRow(u"N&ote :"_s, note);
    form->addRow(u"P&hoto :"_s, photo);
    return editors;
}

QWidget *ArticleSheet::makeButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    const auto add = [&](QPushButton *button, const QString &name, void (TDataSet::*work)()) {
        button->setObjectName(name);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this,
                [this, work] { ShowingExceptions([this, work] { (m_articles.*work)(); }); });
    };
    add(new QPushButton(u"◀ Précéden&t"_s), u"sheetPrior"_s, &TDataSet::Prior);
    add(new QPushButton(u"Su&ivant ▶"_s), u"sheetNext"_s, &TDataSet::Next);
    layout->addWidget(m_place, 1, Qt::AlignCenter);
    add(m_cancel, u"sheetCancel"_s, &TDataSet::Cancel);
    add(m_post, u"sheetPost"_s, &TDataSet::Post);
    return row;
}

void ArticleSheet::follow()
{
    const bool isEditing = m_source.State() == dsEdit || m_source.State() == dsInsert;
    m_post->setEnabled(isEditing);
    m_cancel->setEnabled(isEditing);
    m_place->setText(m_articles.Active()
                         ? u"%1 sur %2"_s.arg(m_articles.RecNo()).arg(m_articles.RecordCount())
                         : QString());
}

} // namespace Shop
