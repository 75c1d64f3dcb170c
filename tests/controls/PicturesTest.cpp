#include "EditorShop.h"

#include <support/Pictures.h>

#include <Zelmar01/controls/DatePopup.h>
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

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QBuffer>
#include <QFormLayout>
#include <QTest>
#include <QVBoxLayout>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// Thin letters have hardly a pixel of their full colour.
constexpr double readable = 3.8;

template<class Control>
Control *add(QWidget &form, const QString &text)
{
    auto *control = new Control;
    control->setText(text);
    form.layout()->addWidget(control);
    return control;
}

TzmGauge *addGauge(QWidget &form, int percent)
{
    auto *gauge = new TzmGauge;
    form.layout()->addWidget(gauge);
    gauge->SetProgress(percent);
    return gauge;
}

QByteArray photo()
{
    QImage image(120, 80, QImage::Format_RGB32);
    image.fill(QColor(0xd8, 0xcf, 0xbf));
    for (int y = 20; y < 60; ++y)
        for (int x = 40; x < 80; ++x)
            image.setPixelColor(x, y, QColor(0xb8, 0x8a, 0x2a));
    QByteArray bytes;
    QBuffer file(&bytes);
    file.open(QIODevice::WriteOnly);
    image.save(&file, "JPEG");
    return bytes;
}

/// Every editor, with a value.
class EditorForm : public QWidget
{
public:
    EditorForm()
    {
        setLocale(French);
        m_layout = new QFormLayout(this);
        add<TzmEdit>(u"Nom"_s)->setEditValue(u"Bague or, trois saphirs"_s);
        Amount = add<TzmCurrencyEdit>(u"Montant"_s);
        Amount->setEditValue(u"-1234.5"_s);
        add<TzmCurrencyEdit>(u"Montant vide"_s);
        add<tzmDateEdit>(u"Date"_s)->setDate(QDate(2026, 2, 28));
        add<tzmDateEditJourMois>(u"Jour et mois"_s)->setDate(QDate(2024, 2, 29));
        add<TDateTimePickerPlus>(u"Jour choisi"_s)->setDate(QDate(2026, 2, 28));
        add<tzmTimeEdit>(u"Heure"_s)->setTime(QTime(14, 30));
        Lookup = add<TzmLookupEdit>(u"Métal"_s);
        Lookup->setListSource(&m_shop.MetalSource);
        Lookup->setEditValue(8);
        add<TzmPickEdit>(u"Place"_s)->setEditText(u"Vitrine 3"_s);
        add<TzmSpinEdit>(u"Stock"_s)->setEditValue(7);
        auto *check = add<TzmCheckEdit>(u"Coche"_s);
        check->setText(u"En vitrine"_s);
        check->setChecked(true);
        auto *bound = add<TzmDBCheckEdit>(u"Coche d'un champ"_s);
        bound->setText(u"À graver"_s);
        bound->setDataSource(&m_shop.Source);
        bound->setDataField(u"VISIBLE"_s);
        auto *memo = add<TzmMemo>(u"Note"_s);
        memo->setEditValue(u"Gravure à l'intérieur,\ndeux lignes"_s);
        memo->setFixedHeight(50);
        Image = add<TzmImage>(u"Photo"_s);
        Image->setEditValue(photo());
        Image->setFixedHeight(80);
        auto *locked = add<TzmEdit>(u"Lecture seule"_s);
        locked->setEditValue(u"BG-101"_s);
        locked->setReadOnly(true);
        resize(440, sizeHint().height());
        show();
        activateWindow();
    }

    TzmCurrencyEdit *Amount;
    TzmLookupEdit *Lookup;
    TzmImage *Image;

private:
    template<class Editor>
    Editor *add(const QString &label)
    {
        auto *editor = new Editor;
        m_layout->addRow(label + u" :"_s, editor);
        return editor;
    }

    EditorShop m_shop;
    QFormLayout *m_layout;
};

} // namespace

TEST(Pictures, smallControlsCanBeReadInEveryPalette)
{
    Pictures::InEachPalette([](Pictures &pictures) {
        QWidget form;
        new QVBoxLayout(&form);
        auto *title = add<TzmLabel>(form, u"Bijouterie & Orfèvrerie"_s);
        auto *link = add<TLabelURL>(form, u"Site du &fournisseur"_s);
        auto *focused = add<TLabelURL>(form, u"Lien qui a le focus"_s);
        auto *hot = add<TLabelURL>(form, u"Lien sous la souris"_s);
        auto *disabled = add<TLabelURL>(form, u"Lien inactif"_s);
        disabled->setEnabled(false);
        auto *stock = addGauge(form, 47);
        auto *full = addGauge(form, 100);
        auto *roles = addGauge(form, 50);
        roles->setBackColor(clWindow);
        roles->setForeColor(clHighlight);
        auto *upright = new TzmGauge(&form);
        upright->setKind(gkVerticalBar);
        upright->SetProgress(70);
        upright->setGeometry(460, 10, 70, 200);
        auto *number = new Tzm_NumEcran(&form);
        number->setAlign(TPlacement::alNone);
        number->setGeometry(460, 300, 69, 20);
        number->setText(u"E0412"_s);
        form.layout()->setContentsMargins(10, 10, 110, 10);
        form.resize(550, 330);
        form.show();
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        focused->setFocus(Qt::TabFocusReason);
        hot->MouseEnter();

        const auto seen = pictures.Take(form, u"controls"_s);
        for (const QWidget *control :
             std::initializer_list<const QWidget *>{title, link, focused, hot, stock, full, upright, number})
            EXPECT_GE(Pictures::ContrastIn(seen, control->geometry().adjusted(2, 2, -2, -2)), readable)
                << pictures.Name().toStdString() << ' ' << control->metaObject()->className();
        // Half of the text is on the bar, half beside it.
        const auto area = roles->geometry();
        const auto half = area.center().x();
        EXPECT_GE(Pictures::ContrastIn(seen, QRect(area.left() + 2, area.top() + 2, half - area.left() - 3,
                                                   area.height() - 4)),
                  readable)
            << pictures.Name().toStdString();
        EXPECT_GE(Pictures::ContrastIn(seen, QRect(half + 3, area.top() + 2, 100, area.height() - 4)),
                  readable)
            << pictures.Name().toStdString();
        EXPECT_GE(Pictures::ContrastIn(seen, disabled->geometry()), 2) << pictures.Name().toStdString();
    });
}

TEST(Pictures, editorsCanBeReadInEveryPalette)
{
    Pictures::InEachPalette([](Pictures &pictures) {
        EditorForm form;
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        form.Amount->setFocus(Qt::TabFocusReason);
        const auto seen = pictures.Take(form, u"editors"_s);
        for (const auto *editor : form.findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            if (editor != form.Image) {
                EXPECT_GE(Pictures::ContrastIn(seen, editor->geometry().adjusted(2, 2, -2, -2)), readable)
                    << pictures.Name().toStdString() << ' ' << editor->metaObject()->className();
            }
        // The picture fills its frame, and the border alone tells of the focus.
        const auto corner = form.Image->geometry().topLeft() + QPoint(6, 6);
        const int ratio = static_cast<int>(seen.devicePixelRatio());
        EXPECT_NEAR(seen.pixelColor(corner * ratio).red(), 0xd8, 4) << pictures.Name().toStdString();
        form.Image->setFocus(Qt::TabFocusReason);
        const auto focused = pictures.Take(form, u"editors-image-focus"_s);
        const auto border = form.Image->geometry().topLeft();
        EXPECT_EQ(focused.pixelColor(border * ratio), form.palette().color(QPalette::Highlight));
        EXPECT_EQ(focused.pixelColor(corner * ratio), seen.pixelColor(corner * ratio));

        form.Lookup->setFocus(Qt::TabFocusReason);
        form.Lookup->showPopup();
        QCoreApplication::processEvents();
        auto *list = form.Lookup->view()->window();
        const auto rows = pictures.Take(*list, u"lookup-list"_s);
        EXPECT_GE(Pictures::ContrastIn(rows, list->rect().adjusted(2, 2, -20, -20)), readable)
            << pictures.Name().toStdString();
        form.Lookup->hidePopup();

        tzmDateEdit date(&form);
        date.setDate(QDate(2026, 2, 28));
        date.show();
        date.DropDown();
        auto *calendar = date.findChild<TDatePopup *>();
        ASSERT_NE(calendar, nullptr);
        const auto days = pictures.Take(*calendar, u"calendar"_s);
        for (const auto *part : calendar->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            EXPECT_GE(Pictures::ContrastIn(days, part->geometry()), readable)
                << pictures.Name().toStdString() << ' ' << part->metaObject()->className();
        calendar->close();
    });
}
