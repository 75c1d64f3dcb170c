#include "EditorShop.h"

#include <Zelmar01/controls/zmLookUpEd.h>
#include <Zelmar01/controls/zmPickEdit.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QSignalSpy>
#include <QSizeGrip>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

void dragGrip(QComboBox &box, const QPoint &by)
{
    auto *grip = box.view()->window()->findChild<QSizeGrip *>();
    const auto from = grip->rect().center(), to = from + by;
    const auto start = grip->mapToGlobal(from);
    QTest::mousePress(grip, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, start + by, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grip, &move);
    QTest::mouseRelease(grip, Qt::LeftButton, {}, from);
}

class Lookups : public testing::Test
{
protected:
    Lookups()
    {
        m_edit.setListSource(&m_shop.MetalSource);
        m_form.Show();
        m_edit.setFocus(Qt::TabFocusReason);
    }
    QString shown() const { return m_edit.currentText() + u'=' + m_edit.EditValue().toString(); }
    void type(const QString &keys) { TypeKeys(m_edit, keys); }
    QAbstractItemView *list() const { return m_edit.view(); }

    Told m_told;
    EditorShop m_shop;
    Form m_form;
    TzmLookupEdit &m_edit = m_form.Add<TzmLookupEdit>();
    QLineEdit &m_other = m_form.Add<QLineEdit>();
};

} // namespace

TEST_F(Lookups, completeWhatIsTypedAndTakeNothingElse)
{
    const struct
    {
        QString Keys, Shown, Selected;
    } cases[] = {
        {u"a"_s, u"Argent=8"_s, u"rgent"_s}, {u"argent"_s, u"Argent=8"_s, u""_s},
        {u"é"_s, u"Étain=10"_s, u"tain"_s},  {u"or g"_s, u"Or gris=11"_s, u"ris"_s},
        {u"ox"_s, u"Or=3"_s, u"r"_s},        {u"x"_s, u"="_s, u""_s},
    };
    for (const auto &one : cases) {
        m_edit.setEditValue({});
        type(one.Keys);
        EXPECT_EQ(shown(), one.Shown) << one.Keys.toStdString();
        EXPECT_EQ(m_edit.lineEdit()->selectedText(), one.Selected) << one.Keys.toStdString();
    }
    m_edit.setEditValue({});
    type(u"or g"_s);
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    EXPECT_EQ(shown(), u"Or=3"_s);
    QTest::keyClick(&m_edit, Qt::Key_Delete);
    EXPECT_EQ(shown(), u"="_s);
    EXPECT_FALSE(m_edit.EditValue().isValid());
}

TEST_F(Lookups, tellWhatIsChosenWhenItIsFinished)
{
    QSignalSpy changed(&m_edit, &TzmLookupEdit::OnChange),
        finished(&m_edit, &TzmLookupEdit::OnEditValueChanged);
    m_edit.setEditValue(3);
    finished.clear();
    type(u"ar"_s);
    EXPECT_EQ(changed.count(), 1) << "the second letter changes nothing";
    EXPECT_EQ(finished.count(), 0);
    QTest::keyClick(&m_edit, Qt::Key_Escape);
    EXPECT_EQ(shown(), u"Or=3"_s);
    type(u"ar"_s);
    m_other.setFocus();
    EXPECT_EQ(finished.count(), 1);

    m_edit.setEditValue(99);
    EXPECT_EQ(shown(), u"99=99"_s) << "a key without a row stays";
    m_edit.setFocus(Qt::TabFocusReason);
    m_other.setFocus();
    EXPECT_EQ(shown(), u"99=99"_s);
    // A row that comes later.
    m_shop.Metals.Insert();
    m_shop.Metals.FieldByName(u"ID"_s).setAsInteger(99);
    m_shop.Metals.FieldByName(u"LIBELLE"_s).setAsString(u"Acier"_s);
    m_shop.Metals.Post();
    QCoreApplication::processEvents();
    EXPECT_EQ(shown(), u"Acier=99"_s);
    m_shop.Metals.Close();
    EXPECT_EQ(shown(), u"99=99"_s);
}

TEST_F(Lookups, theListFollowsTheCursorAndMovesIt)
{
    m_edit.setEditValue(3);
    QTest::keyClick(&m_edit, Qt::Key_F4);
    ASSERT_TRUE(list()->isVisible());
    m_shop.Metals.Last();
    EXPECT_EQ(list()->currentIndex().row(), 3);
    QTest::keyClick(list(), Qt::Key_Up);
    QTest::keyClick(list(), Qt::Key_Return);
    EXPECT_EQ(shown(), u"Étain=10"_s);
    EXPECT_EQ(m_shop.Metals.RecNo(), 3);
    QTest::keyClick(&m_edit, Qt::Key_Up);
    QTest::keyClick(&m_edit, Qt::Key_Tab);
    EXPECT_EQ(shown(), u"Argent=8"_s);
    EXPECT_EQ(m_shop.Metals.RecNo(), 2);

    // Not away from a record that somebody works on, nor without the preset.
    m_shop.Metals.Edit();
    m_edit.setFocus(Qt::TabFocusReason);
    type(u"or"_s);
    m_other.setFocus();
    EXPECT_EQ(m_shop.Metals.RecNo(), 2);
    m_shop.Metals.Cancel();
    m_edit.setListOptions_SyncMode(false);
    m_edit.setFocus(Qt::TabFocusReason);
    type(u"ét"_s);
    m_other.setFocus();
    EXPECT_EQ(m_shop.Metals.RecNo(), 2);
}

TEST_F(Lookups, theListIsWideWithoutTitleAndKeepsTheSizeThatTheUserGivesIt)
{
    m_shop.Connection.Execute(
        u"with recursive n(i) as (values (100) union all select i + 1 from n where i < 299) "
        "insert into METAL select i, 'Un alliage au nom très long, numéro ' || i from n"_s);
    m_shop.Metals.Close();
    m_shop.Metals.Open();
    m_edit.setFixedWidth(120);
    QCoreApplication::processEvents();
    m_edit.showPopup();
    const auto *popup = list()->window();
    EXPECT_GT(popup->width(),
              list()->fontMetrics().horizontalAdvance(u"Un alliage au nom très long, numéro 100"_s));
    const int rowHeight = list()->visualRect(list()->model()->index(0, 0)).height();
    const int shownRows = list()->viewport()->height() / rowHeight;
    EXPECT_LE(shownRows, 51);
    const auto below =
        m_edit.screen()->availableGeometry().bottom() - m_edit.mapToGlobal(QPoint(0, m_edit.height())).y();
    EXPECT_GE(shownRows, std::min(50, below / rowHeight - 3));
    EXPECT_TRUE(m_edit.screen()->availableGeometry().contains(popup->geometry()));
    dragGrip(m_edit, {-40, -150});
    const auto chosen = popup->size();
    m_edit.hidePopup();
    m_edit.showPopup();
    EXPECT_EQ(popup->size(), chosen);
    m_edit.hidePopup();

    m_edit.setDropDownAutoSize(false);
    m_edit.setDropDownSizeable(false);
    m_edit.setDropDownRows(5);
    m_edit.showPopup();
    QCoreApplication::processEvents();
    EXPECT_LE(popup->width(), m_edit.width() + 2);
    EXPECT_EQ(list()->viewport()->height() / rowHeight, 5);
    EXPECT_FALSE(popup->findChild<QSizeGrip *>()->isVisible());
    m_edit.hidePopup();
    m_edit.setListOptions_ShowHeader(true);
    m_shop.Metals.FieldByName(u"LIBELLE"_s).setDisplayLabel(u"Métal"_s);
    m_edit.showPopup();
    QCoreApplication::processEvents();
    QLabel *title = nullptr;
    for (auto *label : list()->findChildren<QLabel *>())
        title = label->isVisible() ? label : title;
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->text(), u"Métal"_s);
    EXPECT_EQ(list()->viewport()->height() / rowHeight, 5) << "the title takes no row";
}

TEST_F(Lookups, whatIsReadOnlyOrNotInFocusStays)
{
    m_edit.setEditValue(8);
    m_other.setFocus();
    TurnWheel(m_edit);
    EXPECT_EQ(shown(), u"Argent=8"_s);
    m_edit.setFocus(Qt::TabFocusReason);
    m_edit.setReadOnly(true);
    for (const auto key : {Qt::Key_Up, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F4, Qt::Key_O})
        QTest::keyClick(&m_edit, key);
    TurnWheel(m_edit);
    EXPECT_EQ(shown(), u"Argent=8"_s);
    EXPECT_FALSE(list()->isVisible());
    m_edit.setReadOnly(false);
    TurnWheel(m_edit);
    EXPECT_EQ(shown(), u"Étain=10"_s);
}

TEST_F(Lookups, theSelectionOutlivesTheFocusOnAForm)
{
    auto &bound = m_form.Add<TzmDBLookupEdit>();
    bound.setListSource(&m_shop.MetalSource);
    bound.setDataSource(&m_shop.Source);
    bound.setDataField(u"METAL"_s);
    for (auto *edit : {&m_edit, static_cast<TzmLookupEdit *>(&bound)}) {
        edit->setEditValue(3);
        edit->setFocus(Qt::TabFocusReason);
        edit->lineEdit()->selectAll();
        m_other.setFocus();
        EXPECT_EQ(edit->lineEdit()->selectedText(), edit == &bound ? u"Or"_s : u""_s);
    }
}

TEST(PickEdit, isTypedOrPickedAndItsListStays)
{
    Form form;
    auto &edit = form.Add<TzmPickEdit>();
    auto &other = form.Add<QLineEdit>();
    for (int i = 0; i < 80; ++i)
        edit.addItem(u"Vitrine %1"_s.arg(i));
    edit.setCurrentIndex(-1);
    form.Show();
    edit.setFocus(Qt::TabFocusReason);
    TypeKeys(edit, u"Réserve"_s);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.currentText(), u"Réserve"_s);
    EXPECT_EQ(edit.count(), 80);
    QTest::keyClick(&edit, Qt::Key_F4);
    ASSERT_TRUE(edit.view()->isVisible());
    QTest::keyClick(edit.view(), Qt::Key_Home);
    QTest::keyClick(edit.view(), Qt::Key_Down);
    QTest::keyClick(edit.view(), Qt::Key_Return);
    EXPECT_EQ(edit.currentText(), u"Vitrine 1"_s);
    edit.showPopup();
    dragGrip(edit, {30, -60});
    const auto chosen = edit.view()->window()->size();
    edit.hidePopup();
    edit.showPopup();
    EXPECT_EQ(edit.view()->window()->size(), chosen);
    edit.hidePopup();

    edit.setReadOnly(true);
    TypeKeys(edit, u"x"_s);
    for (const auto key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_F4})
        QTest::keyClick(&edit, key);
    TurnWheel(edit);
    edit.setReadOnly(false);
    other.setFocus();
    TurnWheel(edit);
    EXPECT_EQ(edit.currentText(), u"Vitrine 1"_s);
}
