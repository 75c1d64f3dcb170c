#include <demo/CodesPage.h>
#include <demo/Hands.h>
#include <demo/ShopLevels.h>

#include <support/TempFolder.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/descrtree/CodeRules.h>

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QSet>
#include <QSettings>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace Shop;
using namespace Zelmar01;

namespace {

class Codes : public testing::Test
{
protected:
    TempFolder m_folder;
    QString m_file = QString::fromStdString((m_folder / "shop.db").string());
    QStringList m_told; // in windows

    Codes()
    {
        SetMessageBox([this](const QString &text, TMsgDlgType, TMsgDlgButtons buttons) {
            m_told << text;
            return buttons.testFlag(mbYes) ? mbYes : mbOK;
        });
        SetExceptionDisplay(
            [this](const std::exception &exception) { m_told << QString::fromUtf8(exception.what()); });
    }
    ~Codes() override
    {
        SetMessageBox({});
        SetExceptionDisplay({});
    }

    static void open(CodesPage &page)
    {
        page.show();
        auto &state = Find<QLabel>(page, u"codesState"_s);
        WaitUntil([&] { return !state.text().isEmpty(); }, u"not loaded"_s);
    }
    static QString state(const CodesPage &page) { return Find<QLabel>(page, u"codesState"_s).text(); }
    static void trigger(const CodesPage &page, const QString &action)
    {
        Find<QAction>(page, action).trigger();
    }
};

TEST_F(Codes, OfTheShopAreAHierarchy)
{
    for (const auto &levels : {ShopLevels(), ManyLevels()}) {
        QHash<int, const TDescr *> byId;
        QSet<QString> codes;
        for (const auto &level : levels) {
            const auto *parent = byId.value(level.IDPere);
            ASSERT_EQ(parent == nullptr, level.IDPere == 0) << level.Code.toStdString();
            ASSERT_TRUE(IsCodeForm(parent ? TParentCode(parent->Code) : TParentCode(), level.Code) &&
                        level.Code.startsWith(parent ? parent->Code : QString()))
                << level.Code.toStdString();
            ASSERT_LE(level.LibLong.size(), LongLabelSize);
            byId.insert(level.ID, &level);
            codes.insert(level.Code.toLower());
        }
        EXPECT_EQ(byId.size(), static_cast<qsizetype>(levels.size()));
        EXPECT_EQ(codes.size(), byId.size());
    }
    EXPECT_EQ(ManyLevels().size(), 100'000U);
}

TEST_F(Codes, AreMadeOnceAndFoundAgain)
{
    ShopDatabase database(m_file);
    database.Require(CodeTable(&ShopLevels));
    database.Connection().Execute(u"delete from descr_article"_s);
    database.Require(CodeTable(&ShopLevels));
    EXPECT_EQ(NextIdentifier(database.Connection()), 1);
    database.Connection().Execute(u"insert into descr_article values (7, 0, '3A', 'Écrin', 'Écrin', 'E')"_s);
    EXPECT_EQ(NextIdentifier(database.Connection()), 8);
    EXPECT_ANY_THROW(database.Connection().Execute(
        u"insert into descr_article values (8, 0, '3a', 'Écrin', 'Écrin', 'E')"_s));
}

TEST_F(Codes, KeepTheNewLevelThatIsRefused)
{
    ShopDatabase database(m_file);
    CodesPage page(database);
    open(page);
    trigger(page, u"addDepartment"_s);
    auto &dialog = Find<QDialog>(page, u"newLevel"_s);
    Find<QLineEdit>(dialog, u"label"_s).setText(u"ÉCRINS"_s);
    auto &code = Find<QLineEdit>(dialog, u"code"_s);
    EXPECT_EQ(code.text(), u"9"_s);
    code.setText(u"1"_s);
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(m_told, QStringList(u"Code non valide ou déjà utilisé !"_s));
    code.setText(u"9"_s);
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
    auto &tree = Find<TTreeViewDescr>(page, u"codeTree"_s);
    EXPECT_EQ(tree.Arbre()->LibLong(tree.NoeudSelectionne()), u"ÉCRINS"_s);

    trigger(page, u"addDepartment"_s);
    EXPECT_EQ(m_told.value(1), u"Nombre maximum de rayons atteint !"_s);
}

TEST_F(Codes, OfferWhatTheSelectedLevelAllows)
{
    ShopDatabase database(m_file);
    CodesPage page(database);
    const auto offered = [&] {
        QStringList names;
        for (const auto *name : {"addDepartment", "addSection", "rename", "remove"})
            if (Find<QAction>(page, QString::fromLatin1(name)).isEnabled())
                names << QString::fromLatin1(name);
        return names.join(u' ').toStdString();
    };
    EXPECT_EQ(offered(), "");
    open(page);
    EXPECT_EQ(offered(), "addDepartment addSection rename remove");
    auto &tree = Find<TTreeViewDescr>(page, u"codeTree"_s);
    tree.setCurrentIndex(tree.IndexDe(TTreeViewDescr::RootNode));
    EXPECT_EQ(offered(), "addDepartment");
}

TEST_F(Codes, AreShownFromTheCacheWithoutTheDatabase)
{
    QString count;
    {
        ShopDatabase database(m_file);
        CodesPage page(database);
        open(page);
        count = state(page).section(u',', 0, 0);
        EXPECT_TRUE(state(page).startsWith(count + u", lus dans la base de données en "_s));
        trigger(page, u"reload"_s);
        EXPECT_TRUE(state(page).startsWith(count + u", chargés du cache en "_s));
    }
    ASSERT_TRUE(QFile::remove(m_file) && QDir().mkpath(m_file)); // a folder is no database
    ShopDatabase database(m_file);
    CodesPage page(database);
    open(page);
    EXPECT_EQ(state(page), u"La base de données est inaccessible. "_s + count + u", venus du cache."_s);
    EXPECT_EQ(m_told.size(), 1);

    ASSERT_TRUE(QDir().rmdir(m_file));
    trigger(page, u"rebuild"_s);
    EXPECT_TRUE(state(page).startsWith(count + u", lus dans la base"_s)) << state(page).toStdString();
    EXPECT_EQ(m_told.size(), 1);
}

TEST_F(Codes, AreAsTheUserLeftThem)
{
    ShopDatabase database(m_file);
    QSettings settings(m_file + u".ini"_s, QSettings::IniFormat);
    {
        CodesPage page(database);
        open(page);
        Find<QAction>(page, u"showCodes"_s).setChecked(true);
        Find<TTreeViewDescr>(page, u"codeTree"_s).SelectNoeud(7);
        page.Save(settings);
    }
    CodesPage page(database);
    page.Restore(settings);
    open(page);
    EXPECT_EQ(Find<TTreeViewDescr>(page, u"codeTree"_s).currentIndex().data(), u"1003 – Émeraude"_s);
    EXPECT_EQ(Find<QLabel>(page, u"levelCode"_s).text(), u"1003"_s);
}

TEST_F(Codes, CanBeTriedInGreatNumberBesideTheShop)
{
    ShopDatabase database(m_file);
    CodesPage page(database);
    open(page);
    auto &tree = Find<TTreeViewDescr>(page, u"codeTree"_s);
    const auto count = tree.Arbre()->Count();
    for (int time = 0; time < 2; ++time) {
        trigger(page, u"trial"_s);
        EXPECT_EQ(tree.Arbre()->Count(), 100'001U);
        tree.SelectNoeud(100'000);
        trigger(page, u"remove"_s);
        EXPECT_EQ(tree.Arbre()->Count(), 100'000U);
        trigger(page, u"trial"_s);
        EXPECT_EQ(tree.Arbre()->Count(), count);
    }
}

} // namespace
