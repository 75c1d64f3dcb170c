#pragma once

#include <data/binding/Form.h>
#include <support/TempFolder.h>

#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/data/Query.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QWheelEvent>

/// The articles of a small shop in SQLite, with a column of each kind; the second row is null but for its ID,
/// and a trigger refuses negative prices.
class EditorShop
{
public:
    EditorShop()
    {
        Connection.setDatabaseName(QString::fromStdString((m_folder / "shop.db").string()));
        for (const auto *sql :
             {"pragma synchronous = off", // or each test waits for the disk
              "create table ARTICLE (ID integer primary key, NOM varchar(12), PRIX decimal(10,2), "
              "ACHAT date, VISIBLE boolean, STOCK integer, METAL integer, NOTE varchar(40), PHOTO blob)",
              "insert into ARTICLE values (1, 'Bague', 1234.5, '2026-02-28', 1, 7, 3, 'Deux saphirs', null)",
              "insert into ARTICLE (ID) values (2)",
              "insert into ARTICLE values (3, 'Jonc', -0.05, '2024-02-29', 0, -2, 99, 'Gravé', null)",
              "create trigger PRIX_POSITIF before update on ARTICLE when new.PRIX < -1000 begin "
              "select raise(abort, 'prix négatif'); end",
              "create table METAL (ID integer primary key, LIBELLE varchar(20))",
              "insert into METAL values (3, 'Or'), (8, 'Argent'), (10, 'Étain'), (11, 'Or gris')"})
            Connection.Execute(QString::fromUtf8(sql));
        Articles.setCommandText(QStringLiteral("select * from ARTICLE order by ID"));
        Metals.setCommandText(QStringLiteral("select ID, LIBELLE from METAL order by ID"));
        Source.setDataSet(&Articles);
        MetalSource.setDataSet(&Metals);
        Articles.Open();
        Metals.Open();
    }

    /// The field of the current record as text; "null" for null.
    QString Stored(const char *field)
    {
        auto &value = Articles.FieldByName(QString::fromLatin1(field));
        return value.IsNull() ? QStringLiteral("null") : value.AsString();
    }
    /// What the database has.
    QString InDatabase(int id, const char *field)
    {
        Zelmar01::TQuery query(nullptr, &Connection);
        query.setCommandText(QStringLiteral("select * from ARTICLE where ID = %1").arg(id));
        query.Open();
        auto &value = query.FieldByName(QString::fromLatin1(field));
        return value.IsNull() ? QStringLiteral("null") : value.AsString();
    }

private:
    const TempFolder m_folder;

public:
    Zelmar01::TConnection Connection;
    Zelmar01::TQuery Articles{nullptr, &Connection}, Metals{nullptr, &Connection};
    Zelmar01::TDataSource Source, MetalSource;
};

inline const QLocale French(QLocale::French, QLocale::France);
inline const QLocale English(QLocale::English, QLocale::UnitedStates);

/// One notch down. The application gives the focus to some widgets before.
inline void TurnWheel(QWidget &widget)
{
    if (widget.focusPolicy() == Qt::WheelFocus)
        widget.setFocus();
    QWheelEvent event(widget.rect().center(), widget.mapToGlobal(widget.rect().center()), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}
