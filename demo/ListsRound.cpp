#include "ListsRound.h"

#include "Hands.h"
#include "MainWindow.h"
#include "Money.h"
#include "ShopDatabase.h"

#include <Zelmar01/data/Query.h>
#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPushButton>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

class Round
{
public:
    Round(MainWindow &window, ShopDatabase &database)
        : m_window(window), m_database(database), m_grid(Find<TzmGrid>(window, u"articleGrid"_s))
    {
    }

    QString Go()
    {
        for (auto *page : m_window.Pages())
            if (page->isAncestorOf(&m_grid))
                m_window.ShowPage(page);
        WaitUntil([this] { return m_grid.DataSet() && m_grid.DataSet()->Active(); },
                  u"les articles ne sont pas lus"_s);
        sort(u"PRIX"_s);
        QString report = u"Le moins cher : "_s + first() + u'\n';
        changePrice();
        const auto changed = inDatabase(u"NOM, PRIX from article"_s);
        report += u"Changé : %1 %2\n"_s.arg(changed->Fields()[0].AsString(),
                                            AmountText(qRound64(changed->Fields()[1].AsFloat() * 100)));
        tryMany();
        giveMetal();
        const auto given = inDatabase(u"LIBELLE from metal join article using (METAL_ID)"_s);
        report += u"Métal : "_s + given->Fields()[0].AsString() + u'\n';
        sortInMemory();
        report +=
            u"En mémoire : "_s + first() + u" ; "_s + Find<QLabel>(m_window, u"gridOrder"_s).text() + u'\n';
        check();
        return report + u"Condition : "_s + Find<QLabel>(m_window, u"condition"_s).text() + u'\n';
    }

private:
    void sort(const QString &field) { m_grid.TitleClick(m_grid.ColumnByFieldName(field)); }

    QString first() const
    {
        m_grid.DataSet()->First();
        return current(u"NOM"_s);
    }

    QString current(const QString &field) const { return m_grid.DataSet()->FieldByName(field).AsString(); }

    // The reference that stands above the grid.
    QString shownArticle() const
    {
        return Find<QLabel>(m_window, u"articleName"_s).text().section(u' ', 0, 0);
    }

    // By the keyboard, as a user does, and on to the next row, which posts it.
    void changePrice()
    {
        m_key = current(u"ARTICLE_ID"_s);
        m_grid.setSelectedIndex(m_grid.ColumnByFieldName(u"PRIX"_s).Index());
        m_grid.setFocus();
        Press(m_grid, Qt::Key_F2);
        auto *editor = m_grid.viewport()->findChild<QLineEdit *>();
        if (!m_grid.EditorMode() || !editor)
            Fail(u"le prix ne se laisse pas modifier"_s);
        editor->selectAll();
        editor->del();
        for (const QChar c : u"36,50"_s) {
            QKeyEvent typed(QEvent::KeyPress, 0, Qt::NoModifier, c);
            QApplication::sendEvent(editor, &typed);
        }
        Press(*editor, Qt::Key_Down);
        if (m_grid.EditorMode())
            Fail(u"le prix n'est pas enregistré"_s);
    }

    // A hundred thousand rows in all lists, and back.
    void tryMany()
    {
        const auto choose = [this](const QString &text) {
            for (auto *action : Find<QPushButton>(m_window, u"volume"_s).menu()->actions())
                if (action->text().contains(text))
                    action->trigger();
        };
        const auto &find = Find<TComboBoxFk>(m_window, u"findArticle"_s);
        const int before = find.count();
        choose(QLocale(QLocale::French).toString(100'000));
        if (find.count() != 100'000 || m_grid.DataSet()->RecordCount() != 100'000)
            Fail(u"les listes ne sont pas remplies"_s);
        Find<QPushButton>(m_window, u"nextArticle"_s).click();
        if (m_grid.DataSet()->RecNo() != 2 || shownArticle() != current(u"REFERENCE"_s))
            Fail(u"l'article montré n'est pas celui de la grille"_s);
        choose(u"magasin"_s);
        if (find.count() != before || shownArticle() != current(u"REFERENCE"_s))
            Fail(u"les articles du magasin ne sont pas revenus"_s);
    }

    void giveMetal()
    {
        auto &find = Find<TComboBoxFk>(m_window, u"findArticle"_s);
        find.SelectionnerCle(m_key);
        emit find.activated(find.currentIndex());
        if (current(u"ARTICLE_ID"_s) != m_key)
            Fail(u"l'article choisi n'est pas l'article courant"_s);
        Find<TDBComboBoxEditFk>(m_window, u"articleMetal"_s).SelectionnerCle(u"8"_s);
        Find<QPushButton>(m_window, u"saveArticle"_s).click();
    }

    void sortInMemory()
    {
        auto &place = Find<QComboBox>(m_window, u"articlePlace"_s);
        place.setCurrentIndex(1);
        emit place.activated(1);
        sort(u"NOM"_s);
        sort(u"PRIX"_s);
        sort(u"PRIX"_s); // the dearest first
    }

    void check()
    {
        auto &choice = Find<TCheckListBoxFK>(m_window, u"choice"_s);
        choice.setFocus();
        Press(choice, Qt::Key_Home);
        Press(choice, Qt::Key_Space);
        Press(choice, Qt::Key_Down);
        Press(choice, Qt::Key_Space);
        if (choice.NbCaseCoche() != 2)
            Fail(u"les articles ne se laissent pas cocher"_s);
    }

    // What became of the article that is changed.
    std::unique_ptr<TQuery> inDatabase(const QString &what)
    {
        auto query = std::make_unique<TQuery>(nullptr, &m_database.Connection());
        query->setCommandText(u"select %1 where ARTICLE_ID = %2"_s.arg(what, m_key));
        query->Open();
        return query;
    }

    MainWindow &m_window;
    ShopDatabase &m_database;
    TzmGrid &m_grid;
    QString m_key;
};

} // namespace

QString GoRoundLists(MainWindow &window, ShopDatabase &database)
{
    return Round(window, database).Go();
}

} // namespace Shop
