#pragma once

#include "Levels.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/descrtree/TreeViewDescr.h>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include <algorithm>

/// For fixtures: a table of codes, the view over it, and in one list what the view says, asks and tells. The
/// model is watched all the time.
class ShownTree
{
protected:
    ShownTree()
    {
        using Zelmar01::TTreeViewDescr;
        m_boxes = Zelmar01::SetMessageBox([this](const QString &text, auto type, auto buttons) {
            const QString kind = type == Zelmar01::mtCustom        ? "plain"
                                 : type == Zelmar01::mtInformation ? "information"
                                                                   : "other";
            const QString choice = buttons == Zelmar01::mbOK                      ? " OK: "
                                   : buttons == (Zelmar01::mbOK | Zelmar01::mbNo) ? " OK/No: "
                                                                                  : " other: ";
            m_log << kind + choice + text;
            if (m_whileAsked)
                m_whileAsked();
            return m_answer;
        });
        m_display = Zelmar01::SetExceptionDisplay(
            [this](const std::exception &error) { m_log << "error: " + QString::fromUtf8(error.what()); });
        m_source.setDataSet(&m_levels);
        m_view.setObjectName("codes");
        m_view.setRequete(&m_source);
        const auto tell = [this](const char *event) {
            // How far the change has come.
            return [this, event](TTreeViewDescr *sender) {
                EXPECT_EQ(sender, &m_view);
                m_log << QString("%1: %2 rows, %3 nodes")
                             .arg(event)
                             .arg(m_view.NbNoeudsDsBase())
                             .arg(m_view.Arbre()->Count() - 1);
            };
        };
        QObject::connect(&m_view, &TTreeViewDescr::OnNoeudInsere, &m_view, tell("inserted"));
        QObject::connect(&m_view, &TTreeViewDescr::OnNoeudModifie, &m_view, tell("changed"));
        QObject::connect(&m_view, &TTreeViewDescr::OnNoeudSupprime, &m_view, tell("deleted"));
        QObject::connect(&m_view, &TTreeViewDescr::OnCacheNonEcrit, &m_view,
                         [this](TTreeViewDescr *, const Zelmar01::TUncarried &texts) {
                             m_log << "no cache: " + texts.Codes.join(' ');
                         });
    }
    ~ShownTree()
    {
        Zelmar01::SetMessageBox(m_boxes);
        Zelmar01::SetExceptionDisplay(m_display);
    }
    ShownTree(const ShownTree &) = delete;
    ShownTree &operator=(const ShownTree &) = delete;

    void makeTable(Zelmar01::TConnection &connection, const QString &codeType)
    {
        connection.Execute("create table DESCR_ARTICLE (DESCR_ART_ID integer primary key, "
                           "DESCR_ART_ID_PERE integer, DESCR_ART_CODE " +
                           codeType +
                           " unique, DESCR_ART_LIBELLE varchar(200), DESCR_ART_LIB_LONG varchar(2000), "
                           "DESCR_ART_LIB_COURT varchar(20))");
        for (const auto &level : someLevels())
            insert(connection, level);
        useTable(connection);
    }

    void useTable(Zelmar01::TConnection &connection)
    {
        m_levels.setConnection(&connection);
        m_levels.setCommandText("select * from DESCR_ARTICLE with (nolock) order by DESCR_ART_ID desc");
        QObject::connect(&connection, &Zelmar01::TConnection::OnCommand, &m_levels,
                         [this](const QString &given, const QString &atServer) {
                             m_given << given;
                             m_atServer << atServer;
                         });
    }

    /// What somebody else adds.
    static void insert(Zelmar01::TConnection &connection, const Zelmar01::TDescr &level)
    {
        connection.Execute(
            "insert into DESCR_ARTICLE values (?, ?, ?, ?, ?, ?)",
            {level.ID, level.IDPere, level.Code, level.Libelle, level.LibLong, level.LibCourt});
    }

    /// What was said since the last call, one thing a line.
    std::string said()
    {
        const auto all = m_log.join('\n').toStdString();
        m_log.clear();
        return all;
    }

    /// Levels as lines in the order of their codes.
    static std::string lines(std::vector<Zelmar01::TDescr> levels)
    {
        std::sort(levels.begin(), levels.end(), [](const auto &a, const auto &b) { return a.Code < b.Code; });
        std::string text;
        for (const auto &level : levels)
            text += level.ChaineObjet().toStdString() + '\n';
        return text;
    }
    std::string shown() const { return lines(levelsOf(*m_view.Arbre())); }
    static std::string rowsOf(const Zelmar01::TQuery &query)
    {
        const auto column = [&](int row, const char *name) {
            return query.ValueAt(row, query.FieldByName(QString("DESCR_ART_") + name).Index());
        };
        std::vector<Zelmar01::TDescr> levels;
        for (int row = 0; row < query.RecordCount(); ++row)
            levels.emplace_back(column(row, "ID").toInt(), column(row, "ID_PERE").toInt(),
                                column(row, "LIB_LONG").toString(), column(row, "LIBELLE").toString(),
                                column(row, "LIB_COURT").toString(), column(row, "CODE").toString());
        return lines(levels);
    }
    std::string stored() const
    {
        Zelmar01::TQuery query(nullptr, m_levels.Connection());
        query.setCommandText("select * from DESCR_ARTICLE");
        query.Open();
        return rowsOf(query);
    }
    /// Tree, table and dataset hold the same, and the dataset stands on the row of the selected level.
    void expectInStep()
    {
        EXPECT_EQ(shown(), stored());
        EXPECT_EQ(rowsOf(m_levels), stored());
        EXPECT_EQ(m_levels.State(), Zelmar01::dsBrowse);
        const int selected = m_view.DonnerIDSelectionne();
        EXPECT_TRUE(selected == 0 || m_levels.FieldByName("DESCR_ART_ID").AsInteger() == selected)
            << selected;
    }

    Zelmar01::TTreeViewDescr::TNode node(int id) const
    {
        return id ? m_view.TrouverDescr(id) : m_view.RootNode;
    }
    QModelIndex index(int id) const { return m_view.IndexDe(node(id)); }
    void select(int id) { m_view.setCurrentIndex(index(id)); }
    QString textOf(int id) const { return index(id).data().toString(); }

    QStringList m_log, m_given, m_atServer;
    Zelmar01::TMsgDlgBtn m_answer = Zelmar01::mbOK;
    std::function<void()> m_whileAsked;
    Zelmar01::TQuery m_levels;
    Zelmar01::TDataSource m_source;
    Zelmar01::TTreeViewDescr m_view;

private:
    QAbstractItemModelTester m_tester{m_view.model(),
                                      QAbstractItemModelTester::FailureReportingMode::Warning};
    Zelmar01::TMessageBox m_boxes;
    Zelmar01::TExceptionDisplay m_display;
};
