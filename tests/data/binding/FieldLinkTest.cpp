#include "Form.h"

#include <data/Samples.h>

#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/Query.h>
#include <Zelmar01/data/binding/FieldLink.h>

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QPushButton>

using namespace Zelmar01;

namespace {

/// The least that a data-bound control is: a line edit on a field's text.
class TextControl : public QLineEdit
{
public:
    TextControl()
    {
        connect(&m_link, &TFieldLink::OnDataChange, this,
                [this] { setText(m_link.Field() ? m_link.Field()->AsString() : QString()); });
        connect(&m_link, &TFieldLink::OnEditingChange, this, [this] { setReadOnly(!m_link.CanEdit()); });
        connect(this, &QLineEdit::textEdited, this,
                [this] { ShowingExceptions([this] { m_link.Changed(); }); });
    }

    TFieldLink &Link() { return m_link; }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() != Qt::Key_Escape || !m_link.Restore())
            QLineEdit::keyPressEvent(event);
    }

private:
    void write() { text().isEmpty() ? m_link.Field()->Clear() : m_link.Field()->setAsString(text()); }

    TFieldLink m_link{this, [this] { write(); }};
};

class FieldLink : public testing::Test
{
protected:
    FieldLink()
    {
        fillWithArticles(m_articles);
        m_source.setDataSet(&m_articles);
        for (const auto &[control, name] : {std::pair(&m_label, "LIBELLE"), {&m_price, "PRIX"}}) {
            (*control)->Link().setFieldName(QString::fromLatin1(name));
            (*control)->Link().setDataSource(&m_source);
        }
        m_form.Show();
        m_label->setFocus();
    }

    void type(TextControl &control, const char *text)
    {
        control.setFocus();
        control.selectAll();
        *text ? TypeKeys(control, QString::fromUtf8(text)) : QTest::keyClick(&control, Qt::Key_Delete);
    }
    QString label() { return m_articles.FieldByName(QStringLiteral("LIBELLE")).AsString(); }
    QString price() { return m_articles.FieldByName(QStringLiteral("PRIX")).AsString(); }

    Told m_told;
    TClientDataSet m_articles;
    TDataSource m_source;
    Form m_form;
    TextControl *m_label = &m_form.Add<TextControl>(), *m_price = &m_form.Add<TextControl>();
    QPushButton *m_post = &m_form.Add<QPushButton>();
};

} // namespace

TEST_F(FieldLink, showsTheCurrentRecord)
{
    EXPECT_EQ(m_label->text(), QStringLiteral("Bague"));
    m_articles.MoveBy(2);
    EXPECT_EQ(m_label->text(), QStringLiteral("Collier"));
    EXPECT_TRUE(m_price->text().isEmpty()) << "a null";
    m_articles.Edit();
    m_articles.FieldByName(QStringLiteral("PRIX")).setAsString(QStringLiteral("3"));
    EXPECT_EQ(m_price->text(), QStringLiteral("3.00"));
    m_articles.Cancel();
    EXPECT_TRUE(m_price->text().isEmpty());
    m_articles.Close();
    EXPECT_TRUE(m_label->text().isEmpty() && m_label->isReadOnly());
    fillWithArticles(m_articles);
    EXPECT_EQ(m_label->text(), QStringLiteral("Bague"));
    m_source.setDataSet(nullptr);
    EXPECT_TRUE(m_label->text().isEmpty());
}

TEST_F(FieldLink, forgetsADataSourceThatGoes)
{
    auto source = std::make_unique<TDataSource>();
    source->setDataSet(&m_articles);
    m_label->Link().setDataSource(source.get());
    source.reset();
    EXPECT_TRUE(m_label->text().isEmpty() && m_label->isReadOnly());
    m_articles.Last();
    EXPECT_TRUE(m_label->text().isEmpty());
}

TEST_F(FieldLink, typingEditsTheRecordAndAMovePostsIt)
{
    type(*m_label, "Broche");
    EXPECT_EQ(m_articles.State(), dsEdit);
    EXPECT_EQ(label(), QStringLiteral("Bague")) << "written too early";
    type(*m_price, "12,5"); // refused, but the label is written
    EXPECT_EQ(label(), QStringLiteral("Broche"));
    type(*m_price, "12.5");
    m_articles.Next();
    m_articles.First();
    EXPECT_EQ(label() + u' ' + price(), QStringLiteral("Broche 12.50"));
    type(*m_label, "");
    m_articles.Post();
    EXPECT_TRUE(m_articles.FieldByName(QStringLiteral("LIBELLE")).IsNull());
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(FieldLink, theFirstRowIsTypedIntoAnEmptyDataset)
{
    while (m_articles.RecordCount() > 0)
        m_articles.Delete();
    type(*m_label, "Dé");
    EXPECT_EQ(m_articles.State(), dsInsert);
    EXPECT_EQ(m_label->text(), QStringLiteral("Dé")) << "what was typed must outlive the new record";
    m_articles.FieldByName(QStringLiteral("ID")).setAsInteger(1);
    m_articles.Post();
    EXPECT_EQ(label(), QStringLiteral("Dé"));
}

TEST_F(FieldLink, aRefusedValueKeepsTheFocusWithOneMessage)
{
    type(*m_price, "cher");
    QTest::keyClick(m_price, Qt::Key_Tab);
    EXPECT_TRUE(m_price->hasFocus());
    EXPECT_EQ(m_told.Take().size(), 1);
    EXPECT_EQ(m_price->text(), QStringLiteral("cher"));
    // Who asks for the post tells it, and nobody else.
    EXPECT_THROW(m_articles.Next(), EDatabaseError);
    EXPECT_EQ(m_articles.RecNo(), 1);
    EXPECT_TRUE(m_told.Take().isEmpty());
    type(*m_price, "5");
    QTest::keyClick(m_price, Qt::Key_Tab);
    EXPECT_FALSE(m_price->hasFocus());
    EXPECT_EQ(price(), QStringLiteral("5.00"));
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(FieldLink, aClickOnAButtonTellsARefusalOnceAndCancelAlwaysWorks)
{
    QObject::connect(m_post, &QPushButton::clicked, m_post,
                     [this] { ShowingExceptions([this] { m_articles.Post(); }); });
    auto &cancel = m_form.Add<QPushButton>();
    QObject::connect(&cancel, &QPushButton::clicked, &cancel, [this] { m_articles.Cancel(); });
    m_form.Show();
    const auto click = [this](const QPushButton &button) {
        // Through the window, so that the application knows which button is down.
        const auto place = button.mapTo(&m_form, button.rect().center());
        QTest::mousePress(m_form.windowHandle(), Qt::LeftButton, {}, place);
        QTest::qWait(30);
        EXPECT_TRUE(m_told.Take().isEmpty()) << "told while the button is down";
        QTest::mouseRelease(m_form.windowHandle(), Qt::LeftButton, {}, place);
        return m_told.Take().size();
    };
    type(*m_price, "cher");
    EXPECT_EQ(click(*m_post), 1);
    EXPECT_TRUE(m_price->hasFocus());
    EXPECT_EQ(m_articles.State(), dsEdit);
    EXPECT_EQ(click(cancel), 0);
    EXPECT_EQ(m_price->text(), QStringLiteral("1250.00"));
    EXPECT_EQ(m_articles.State(), dsBrowse);
}

TEST_F(FieldLink, escapeGivesBackTheValueFromBefore)
{
    type(*m_label, "Broche");
    QTest::keyClick(m_label, Qt::Key_Escape);
    EXPECT_EQ(m_label->text(), QStringLiteral("Bague"));
    EXPECT_FALSE(m_articles.Modified());
    type(*m_label, "Broche");
    m_label->Link().UpdateRecord(); // as a control does for a finished choice
    EXPECT_EQ(label(), QStringLiteral("Broche"));
    QTest::keyClick(m_label, Qt::Key_Escape);
    EXPECT_EQ(label(), QStringLiteral("Bague"));
    type(*m_label, "Broche");
    m_price->setFocus();
    m_label->setFocus();
    QTest::keyClick(m_label, Qt::Key_Escape);
    EXPECT_EQ(label(), QStringLiteral("Broche")) << "it had been left";
}

TEST_F(FieldLink, whatMustNotBeEditedIsReadOnly)
{
    const auto isLocked = [this] {
        TypeKeys(*m_label, QStringLiteral("x"));
        const bool locked = m_label->text() == QStringLiteral("Bague") && m_articles.State() == dsBrowse;
        m_articles.Cancel();
        return locked;
    };
    m_label->Link().setReadOnly(true);
    EXPECT_TRUE(isLocked());
    m_label->Link().setReadOnly(false);
    m_articles.FieldByName(QStringLiteral("LIBELLE")).setReadOnly(true);
    m_articles.First();
    EXPECT_TRUE(isLocked());
    m_articles.FieldByName(QStringLiteral("LIBELLE")).setReadOnly(false);
    m_source.setAutoEdit(false); // nobody hears of it before the first key
    EXPECT_TRUE(isLocked());
    m_articles.Edit();
    EXPECT_FALSE(isLocked());
    m_source.setAutoEdit(true);
    EXPECT_FALSE(isLocked());
}

TEST_F(FieldLink, anUnknownFieldIsToldOnce)
{
    EXPECT_THROW(m_label->Link().setFieldName(QStringLiteral("PAS_LA")), EDatabaseError);
    m_articles.Next();
    EXPECT_TRUE(m_told.Take().isEmpty());
    EXPECT_TRUE(m_label->text().isEmpty() && m_label->isReadOnly());
    m_articles.CreateDataSet({{QStringLiteral("PRIX"), ftFloat, 0, false, false}});
    EXPECT_EQ(m_told.Take().size(), 1) << "the dataset that has just been opened lacks it too";
    m_label->Link().setFieldName(QStringLiteral("PRIX"));
    fillWithArticles(m_articles);
    EXPECT_EQ(m_label->text(), QStringLiteral("1250.00"));
    EXPECT_TRUE(m_told.Take().isEmpty());
}

TEST_F(FieldLink, aDatabaseThatRefusesTheEditSaysSoAndTheOldTextStays)
{
    const TempFolder folder;
    TConnection connection;
    connection.setDatabaseName(QString::fromStdString((folder / "shop.db").string()));
    connection.Execute(QStringLiteral("create table A (ID integer primary key, LIBELLE varchar(8))"));
    connection.Execute(QStringLiteral("insert into A values (1, 'Bague')"));
    TQuery query(nullptr, &connection);
    query.setCommandText(QStringLiteral("select * from A"));
    query.Open();
    m_price->Link().setDataSource(nullptr);
    m_source.setDataSet(&query);
    type(*m_label, "beaucoup trop long");
    QTest::keyClick(m_label, Qt::Key_Tab);
    EXPECT_TRUE(m_label->hasFocus());
    EXPECT_EQ(m_told.Take().size(), 1);
    type(*m_label, "Broche");
    connection.Execute(QStringLiteral("drop table A"));
    EXPECT_THROW(query.Post(), EDatabaseError);
    EXPECT_EQ(m_label->text(), QStringLiteral("Broche"));
    query.Cancel();
    EXPECT_EQ(m_label->text(), QStringLiteral("Bague"));
}
