#pragma once

#include <data/binding/Form.h>
#include <support/TempFolder.h>

#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/data/Query.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QSignalSpy>

/// A grid in a window, over the articles of a small shop: in SQLite, or copied into memory.
class GridFixture : public testing::Test
{
protected:
    GridFixture()
    {
        QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
        m_connection.setDatabaseName(QString::fromStdString((m_folder / "shop.db").string()));
        for (const auto *sql :
             {"create table ARTICLE (ID integer primary key, NOM varchar(20) not null, PRIX decimal(10,2), "
              "ENTREE date, SOLDE boolean)",
              "insert into ARTICLE values (1, 'bague', 1250.5, '2024-03-14', 0), "
              "(2, 'Étui', 35, '2023-12-01', 1), (3, 'Bague', 189.9, null, 0), "
              "(4, 'Collier', null, '2024-01-02', null)"})
            m_connection.Execute(QString::fromUtf8(sql));
        m_query.setCommandText(m_sql);
        m_before = Zelmar01::SetMessageBox(
            [this](const QString &text, Zelmar01::TMsgDlgType, Zelmar01::TMsgDlgButtons) {
                m_asked << text;
                return m_answer;
            });
        m_form.resize(640, 240);
    }
    ~GridFixture() override
    {
        Zelmar01::SetMessageBox(m_before);
        QLocale::setDefault(QLocale::c());
    }

    /// Shows the grid over the query, or over a copy of its rows in memory.
    void show(Zelmar01::TDataSet &rows)
    {
        m_query.Open();
        if (&rows == &m_memory) {
            m_memory.LoadFrom(m_query);
            m_query.Close();
        }
        m_source.setDataSet(&rows);
        m_grid.setDataSource(&m_source);
        m_form.Show();
        m_grid.setFocus();
        QCoreApplication::processEvents();
    }
    Zelmar01::TDataSet &rows() const { return *m_source.DataSet(); }

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    void key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    void type(const char *typed)
    {
        for (const QChar c : text(typed)) // the first one may open the editor
            TypeKeys(*QApplication::focusWidget(), c);
    }
    void clickCell(int row, int column, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(m_grid.viewport(), Qt::LeftButton, modifiers,
                          m_grid.visualRect(m_grid.model()->index(row, column)).center());
    }
    void clickTitle(const char *field)
    {
        auto *titles = m_grid.horizontalHeader();
        const int column = m_grid.ColumnByFieldName(text(field)).Index();
        QTest::mouseClick(titles->viewport(), Qt::LeftButton, {},
                          {titles->sectionViewportPosition(column) + 10, titles->height() / 2});
    }
    QString title(const char *field) const { return m_grid.ColumnByFieldName(text(field)).Title(); }
    QString cell(int row, int column) const { return m_grid.model()->index(row, column).data().toString(); }
    /// The keys of the rows in the order in which they are shown: "1 2 3 4".
    std::string shown() const
    {
        QStringList keys;
        for (int row = 0; row < m_grid.model()->rowCount(); ++row)
            keys << cell(row, 0);
        return keys.join(u' ').toStdString();
    }
    /// What the database holds.
    std::string stored(const char *sql)
    {
        Zelmar01::TQuery query(nullptr, &m_connection);
        query.setCommandText(text(sql));
        query.Open();
        return query.Fields()[0].AsString().toStdString();
    }
    QLineEdit *editor() const
    {
        auto *line = m_grid.findChild<QLineEdit *>();
        return line && line->isVisible() ? line : nullptr;
    }

    const QString m_sql = QStringLiteral("select * from ARTICLE");
    TempFolder m_folder;
    Told m_told;
    Zelmar01::TMsgDlgBtn m_answer = Zelmar01::mbOK;
    QStringList m_asked;
    Zelmar01::TMessageBox m_before;
    Zelmar01::TConnection m_connection;
    Zelmar01::TQuery m_query{nullptr, &m_connection};
    Zelmar01::TClientDataSet m_memory;
    Zelmar01::TDataSource m_source;
    Form m_form;
    Zelmar01::TzmGrid &m_grid = m_form.Add<Zelmar01::TzmGrid>();
    QLineEdit &m_other = m_form.Add<QLineEdit>();
};
