#include "CodesRound.h"

#include "Hands.h"
#include "MainWindow.h"
#include "ShopDatabase.h"

#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/descrtree/TreeViewDescr.h>

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSqlQuery>

#include <optional>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

class Round
{
public:
    Round(MainWindow &window, const ShopDatabase &database)
        : m_window(window), m_tree(Find<TTreeViewDescr>(window, u"codeTree"_s))
    {
        UsePlace(database.Place(), m_connection);
    }

    QString Go()
    {
        showPage();
        const QStringList place{u"BAGUES"_s, u"Or jaune"_s, u"750 millièmes (18 carats)"_s};
        goTo(place);
        addSection(u"Tanzanite"_s);
        QString report = u"Ajouté : "_s + rowText() + u'\n';
        rename(u"Tanzanite bleue"_s);
        report += u"Renommé : "_s + rowText() + u'\n';
        remove();
        report += u"Supprimé : il reste %1 niveaux.\n"_s.arg(m_levels);
        goTo(place + QStringList(u"Émeraude"_s));
        reload();
        reload(); // now from the cache files
        return report;
    }

private:
    void showPage()
    {
        for (auto *page : m_window.Pages())
            if (page->isAncestorOf(&m_tree))
                m_window.ShowPage(page);
        WaitUntil([this] { return m_tree.Arbre(); }, u"les codes ne sont pas chargés"_s);
        m_levels = countLevels();
        Find<QAction>(m_window, u"showCodes"_s).setChecked(true);
        m_tree.setFocus();
    }

    // Opens the tree down to a level, with the keys.
    void goTo(const QStringList &labels)
    {
        Press(m_tree, Qt::Key_Home);
        for (const auto &label : labels) {
            const auto above = m_tree.currentIndex();
            if (!m_tree.isExpanded(above))
                Press(m_tree, Qt::Key_Right);
            do
                Press(m_tree, Qt::Key_Down);
            while (selectedLabel() != label && !isLastBelow(above));
            if (selectedLabel() != label)
                Fail(u"« %1 » manque dans l'arbre"_s.arg(label));
        }
    }

    QString selectedLabel() const { return m_tree.currentIndex().data(Qt::EditRole).toString(); }

    bool isLastBelow(const QModelIndex &above) const
    {
        return m_tree.currentIndex().row() + 1 == m_tree.model()->rowCount(above);
    }

    void addSection(const QString &label)
    {
        Find<QAction>(m_window, u"addSection"_s).trigger();
        auto &dialog = Find<QDialog>(m_window, u"newLevel"_s);
        Find<QLineEdit>(dialog, u"label"_s).setText(label);
        Find<QLineEdit>(dialog, u"shortLabel"_s).setText(u"TANZ"_s);
        Press(Find<QLineEdit>(dialog, u"label"_s), Qt::Key_Return);
        m_id = m_tree.DonnerIDSelectionne();
        requireRow(label);
        // A window that closes gives the focus back later on, which would end an edit.
        WaitUntil([&] { return !m_window.findChild<QDialog *>(); },
                  u"la fenêtre de la rubrique ne se ferme pas"_s);
    }

    void rename(const QString &label)
    {
        Find<QAction>(m_window, u"rename"_s).trigger();
        const auto editor = [this] { return m_tree.viewport()->findChild<QLineEdit *>(); };
        WaitUntil([&] { return editor(); }, u"le libellé ne se laisse pas modifier"_s);
        editor()->setText(label);
        Press(*editor(), Qt::Key_Return);
        WaitUntil([&] { return !editor(); }, u"la modification du libellé ne se termine pas"_s);
        requireRow(label);
    }

    void remove()
    {
        auto before = SetMessageBox([](const QString &, TMsgDlgType, TMsgDlgButtons) { return mbOK; });
        const auto restore = qScopeGuard([&] { SetMessageBox(before); });
        Find<QAction>(m_window, u"remove"_s).trigger();
        if (row() || countLevels() != m_levels || m_tree.TrouverDescr(m_id) != m_tree.NoNode)
            Fail(u"la rubrique n'est pas supprimée"_s);
    }

    void reload()
    {
        const auto label = selectedLabel();
        Find<QAction>(m_window, u"reload"_s).trigger();
        if (selectedLabel() != label || m_tree.Arbre()->Count() != static_cast<std::size_t>(m_levels) + 1)
            Fail(u"l'arbre rechargé n'est plus le même"_s);
    }

    void requireRow(const QString &label)
    {
        const auto node = m_tree.TrouverDescr(m_id);
        if (node == m_tree.NoNode || m_tree.Arbre()->Libelle(node) != label ||
            row() != m_tree.Arbre()->Descr(node))
            Fail(u"la table ne contient pas ce que l'arbre montre"_s);
    }

    // The level of the round as the table holds it.
    std::optional<TDescr> row()
    {
        std::optional<TDescr> level;
        m_connection.ReadRows(
            u"select DESCR_ART_ID, DESCR_ART_ID_PERE, DESCR_ART_LIB_LONG, DESCR_ART_LIBELLE, "
            "DESCR_ART_LIB_COURT, DESCR_ART_CODE from descr_article where DESCR_ART_ID = "_s +
                QString::number(m_id),
            [&](const QSqlQuery &row) {
                const auto text = [&](int column) { return row.value(column).toString(); };
                level.emplace(row.value(0).toInt(), row.value(1).toInt(), text(2), text(3), text(4), text(5));
            });
        return level;
    }

    QString rowText()
    {
        const auto level = row();
        return level->Code + u' ' + level->LibLong + u" ("_s + level->LibCourt + u')';
    }

    int countLevels()
    {
        int count = 0;
        m_connection.ReadRows(u"select count(*) from descr_article"_s,
                              [&](const QSqlQuery &row) { count = row.value(0).toInt(); });
        return count;
    }

    MainWindow &m_window;
    TTreeViewDescr &m_tree;
    TConnection m_connection; // another one than the page's
    int m_id = 0, m_levels = 0;
};

} // namespace

QString GoRoundCodes(MainWindow &window, const ShopDatabase &database)
{
    return Round(window, database).Go();
}

} // namespace Shop
