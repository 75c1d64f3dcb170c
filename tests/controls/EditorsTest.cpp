// The editors that need no file of their own, and what all classes have in common.
#include "EditorShop.h"

#include <Zelmar01/controls/DateTimePickerPlus.h>
#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/NumEcran.h>
#include <Zelmar01/controls/TimeEdit.h>
#include <Zelmar01/controls/zmCheckBox.h>
#include <Zelmar01/controls/zmCurrency.h>
#include <Zelmar01/controls/zmDateEdit.h>
#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/controls/zmLabel.h>
#include <Zelmar01/controls/zmLookUpEd.h>
#include <Zelmar01/controls/zmMemo.h>
#include <Zelmar01/controls/zmPickEdit.h>
#include <Zelmar01/controls/zmSpinEdit.h>
#include <Zelmar01/controls/zmTextEdit.h>
#include <Zelmar01/core/Exceptions.h>

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QMenu>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>

#include <memory>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

template<class... Classes>
std::vector<std::unique_ptr<QWidget>> oneOfEach()
{
    std::vector<std::unique_ptr<QWidget>> all;
    (all.push_back(std::make_unique<Classes>(nullptr)), ...);
    return all;
}

std::vector<std::unique_ptr<QWidget>> allControls()
{
    return oneOfEach<TzmGauge, TLabelURL, TzmLabel, Tzm_NumEcran, TzmCheckEdit, TzmDBCheckEdit,
                     TzmCurrencyEdit, TzmDBCurrencyEdit, tzmDateEdit, tzmDBDateEdit, tzmTimeEdit,
                     tzmDateEditJourMois, TDateTimePickerPlus, TzmLookupEdit, TzmDBLookupEdit, TzmMemo,
                     TzmDBMemo, TzmPickEdit, TzmSpinEdit, TzmDBSpinEdit, TzmEdit, TzmDBEdit, TzmImage,
                     TzmDBImage>();
}

QVariant another(const QMetaProperty &property, const QVariant &value)
{
    if (property.isEnumType() && !property.isFlagType()) {
        const auto names = property.enumerator();
        return names.value(names.value(0) == value.toInt() ? 1 : 0);
    }
    switch (value.typeId()) {
    case QMetaType::Bool:
        return !value.toBool();
    case QMetaType::QString:
        return value.toString() + u"9"_s;
    case QMetaType::QColor:
        return QColor(1, 2, 3);
    default:
        return value.toInt() == 1 ? 2 : 1;
    }
}

QByteArray picture(const char *format, const QColor &color)
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

} // namespace

TEST(Controls, whatAFormOverridesCanBeReset)
{
    int properties = 0;
    for (const auto &control : allControls()) {
        const auto *meta = control->metaObject();
        for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
            const auto property = meta->property(i);
            const auto isOurs =
                QByteArray(property.enclosingMetaObject()->className()).startsWith("Zelmar01::");
            if (!isOurs || !property.isResettable() || meta->indexOfProperty(property.name()) != i ||
                qstrcmp(property.name(), "ParentFont") == 0)
                continue;
            const auto preset = property.read(control.get());
            const auto other = another(property, preset);
            EXPECT_TRUE(property.write(control.get(), other));
            const auto name = std::string(meta->className()) + '.' + property.name();
            EXPECT_NE(property.read(control.get()), preset) << name;
            EXPECT_TRUE(property.reset(control.get())) << name;
            EXPECT_EQ(property.read(control.get()), preset) << name;
            ++properties;
        }
    }
    EXPECT_GT(properties, 80);
}

TEST(Controls, keepTheirFontFromTheFormWhereTheyAreToldTo)
{
    QWidget form;
    auto font = form.font();
    font.setPointSizeF(font.pointSizeF() + 7);
    font.setItalic(true);
    form.setFont(font);
    const QStringList takeIt{u"tzmDateEdit"_s,         u"tzmDBDateEdit"_s,       u"tzmTimeEdit"_s,
                             u"tzmDateEditJourMois"_s, u"TDateTimePickerPlus"_s, u"TzmEdit"_s,
                             u"TzmDBEdit"_s,           u"TLabelURL"_s,           u"TzmImage"_s,
                             u"TzmDBImage"_s};
    for (auto &control : allControls()) {
        const auto name = QString::fromLatin1(control->metaObject()->className()).section(u':', -1);
        const auto own = control->font();
        control->setParent(&form);
        control->ensurePolished();
        if (takeIt.contains(name)) {
            EXPECT_EQ(control->font(), font) << name.toStdString();
        } else {
            EXPECT_EQ(control->font(), own) << name.toStdString();
            EXPECT_TRUE(control->setProperty("ParentFont", true)) << name.toStdString();
            EXPECT_EQ(control->font(), font) << name.toStdString();
        }
        control->setParent(nullptr);
    }
}

TEST(Controls, assistiveTechnologyReadsPicturesAndNumbers)
{
    TzmImage image;
    auto *told = QAccessible::queryAccessibleInterface(&image);
    EXPECT_EQ(told->role(), QAccessible::Graphic);
    EXPECT_EQ(told->text(QAccessible::Name) + u": "_s + told->text(QAccessible::Description),
              u"Image: Aucune image"_s);
    image.setEditValue(picture("PNG", Qt::red));
    EXPECT_EQ(told->imageInterface()->imageDescription(), u"Image de 40 × 20 points"_s);

    TzmSpinEdit spin;
    spin.setMaxValue(12);
    spin.setEditValue(5);
    auto *value = QAccessible::queryAccessibleInterface(&spin)->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue(), 5.0);
    EXPECT_EQ(value->maximumValue(), 12);
    value->setCurrentValue(7);
    value->setCurrentValue(13);
    EXPECT_EQ(spin.EditValue().value<TDecimal>(), TDecimal(7));
}

TEST(CheckEdit, isCheckedByKeyAndMouseAndSaysWhatStandsForIt)
{
    Form form;
    auto &check = form.Add<TzmCheckEdit>();
    form.Show();
    check.setText(u"En vitrine"_s);
    check.setEditValue({});
    EXPECT_EQ(check.checkState(), Qt::PartiallyChecked);
    QSignalSpy changed(&check, &TzmCheckEdit::OnChange);
    QTest::keyClick(&check, Qt::Key_Space);
    EXPECT_EQ(check.EditValue(), QVariant(true)) << "null only comes from the field";
    QTest::mouseClick(&check, Qt::LeftButton, {}, {8, check.height() / 2});
    EXPECT_EQ(check.EditValue(), QVariant(false));
    check.setReadOnly(true);
    QTest::keyClick(&check, Qt::Key_Space);
    EXPECT_EQ(check.EditValue(), QVariant(false));
    EXPECT_EQ(changed.count(), 2);

    check.setValueChecked(u"O"_s);
    check.setValueUnchecked(u"N"_s);
    const struct
    {
        QVariant Given, Seen;
    } cases[] = {{u"O"_s, u"O"_s}, {u"N"_s, u"N"_s}, {u"x"_s, {}}, {true, {}}, {{}, {}}};
    for (const auto &one : cases) {
        check.setEditValue(one.Given);
        EXPECT_EQ(check.EditValue(), one.Seen) << one.Given.toString().toStdString();
    }
}

TEST(SpinEdit, stepsByKeyWheelAndMouseWithinItsLimits)
{
    Told told;
    Form form;
    auto &spin = form.Add<TzmSpinEdit>();
    auto &other = form.Add<QLineEdit>();
    form.setLocale(French);
    form.Show();
    spin.setFocus(Qt::TabFocusReason);
    spin.setEditValue(QVariant::fromValue(TDecimal(-5, 1)));
    EXPECT_EQ(spin.text(), u"-0,5"_s);
    QTest::keyClick(&spin, Qt::Key_Up);
    EXPECT_EQ(spin.text(), u"0,5"_s) << "no limits at first";
    QStyleOptionSpinBox option;
    option.initFrom(&spin);
    option.subControls = QStyle::SC_All;
    option.buttonSymbols = spin.buttonSymbols();
    const auto up =
        spin.style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, &spin).center();
    QTest::mouseClick(&spin, Qt::LeftButton, {}, up);
    EXPECT_EQ(spin.text(), u"1,5"_s);
    QTest::keyClick(&spin, Qt::Key_Escape);
    EXPECT_EQ(spin.text(), u"-0,5"_s);

    spin.setMinValue(1);
    spin.setMaxValue(12);
    spin.setIncrement(5);
    const struct
    {
        QString Typed, Key, Shown;
        int Steps;
    } cases[] = {
        {u"7"_s, {}, u"12"_s, 1}, {u"3"_s, {}, u"1"_s, -1}, {u"20"_s, {}, u"12"_s, -1}, {{}, {}, u"5"_s, 1}};
    for (const auto &one : cases) {
        spin.setEditValue({});
        TypeKeys(spin, one.Typed);
        spin.stepBy(one.Steps);
        EXPECT_EQ(spin.text(), one.Shown) << one.Typed.toStdString();
    }
    spin.setEditValue({});
    other.setFocus();
    TurnWheel(spin);
    EXPECT_EQ(spin.text(), QString()) << "a wheel that scrolls the form";
    spin.setFocus(Qt::TabFocusReason);
    TypeKeys(spin, u"4a0"_s);
    other.setFocus();
    EXPECT_TRUE(spin.hasFocus());
    EXPECT_EQ(told.Take(), QStringList(u"« 40 » n'est pas entre 1 et 12"_s));
    QTest::keyClick(&spin, Qt::Key_Backspace);
    other.setFocus();
    EXPECT_EQ(spin.EditValue().value<TDecimal>(), TDecimal(4));
    spin.setFocus();
    spin.selectAll();
    QTest::keyClick(&spin, Qt::Key_Delete);
    other.setFocus();
    EXPECT_FALSE(spin.EditValue().isValid());
    EXPECT_TRUE(told.Take().isEmpty());
}

TEST(ImageEdit, showsEveryFormatStretchedAndTakesWhatUsersGive)
{
    const TempFolder folder;
    Told told;
    Form form;
    auto &image = form.Add<TzmImage>();
    image.setMinimumSize(200, 120);
    form.Show();
    const auto seen = [&](const QPoint &place) { return image.grab().toImage().pixelColor(place); };
    const QPoint corner(4, 4);
    for (const char *format : {"JPEG", "PNG", "BMP"}) {
        image.setEditValue(picture(format, QColor(200, 30, 30)));
        EXPECT_NEAR(seen(corner).red(), 200, 3) << format;
        image.setStretch(false);
        EXPECT_EQ(seen(corner), image.palette().color(QPalette::Base)) << format;
        EXPECT_NEAR(seen(image.rect().center()).red(), 200, 3) << format;
        image.setStretch(true);
    }
    image.setEditValue(QByteArray("no picture"));
    EXPECT_TRUE(image.Picture().isNull());
    EXPECT_EQ(image.EditValue(), QVariant(QByteArray("no picture"))) << "its bytes stay";

    // What comes without a file is kept as JPEG; the bytes of a file stay as they are.
    QImage painted(8, 8, QImage::Format_RGB32);
    painted.fill(Qt::blue);
    QApplication::clipboard()->setImage(painted);
    QTest::keyClick(&image, Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(image.EditValue().toByteArray().startsWith("\xFF\xD8"));
    const auto name = QString::fromStdString((folder / "bague.png").string());
    const auto png = picture("PNG", Qt::green);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(png) == png.size());
    file.close();
    image.LoadFromFile(name);
    EXPECT_EQ(image.EditValue().toByteArray(), png);
    const auto copy = QString::fromStdString((folder / "copie").string());
    image.SaveToFile(copy);
    EXPECT_EQ(QFileInfo(copy).size(), png.size());
    EXPECT_THROW(image.SaveToFile(QString::fromStdString((folder / "no" / "x").string())), EInOutError);
    EXPECT_THROW(image.LoadFromFile(name + u"x"_s), EInOutError);
    EXPECT_THROW(image.LoadFromFile(u"/dev/null"_s), EInOutError);

    QTest::keyClick(&image, Qt::Key_X, Qt::ControlModifier);
    EXPECT_FALSE(image.EditValue().isValid());
    EXPECT_EQ(QApplication::clipboard()->image().pixelColor(0, 0), QColor(Qt::green));
    image.setReadOnly(true);
    QTest::keyClick(&image, Qt::Key_V, Qt::ControlModifier);
    EXPECT_FALSE(image.EditValue().isValid());
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {2, 2}, image.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&image, &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (const auto *action : menu->actions())
        EXPECT_FALSE(action->isEnabled() && !action->isSeparator()) << action->text().toStdString();
    menu->close();
    EXPECT_TRUE(told.Take().isEmpty());
}

TEST(Memo, isLeftWithTheTabKey)
{
    Form form;
    auto &memo = form.Add<TzmMemo>();
    auto &other = form.Add<QLineEdit>();
    form.Show();
    memo.setFocus();
    QSignalSpy changed(&memo, &TzmMemo::OnChange);
    memo.setEditValue(u"Une ligne"_s);
    EXPECT_EQ(changed.count(), 0);
    memo.moveCursor(QTextCursor::End);
    QTest::keyClick(&memo, Qt::Key_Return);
    TypeKeys(memo, u"et l'autre"_s);
    QTest::keyClick(&memo, Qt::Key_Tab);
    EXPECT_EQ(memo.EditValue(), QVariant(u"Une ligne\net l'autre"_s));
    EXPECT_TRUE(other.hasFocus());
    memo.clear();
    EXPECT_FALSE(memo.EditValue().isValid());
}
