#include "EditorShop.h"

#include <support/Pictures.h>

#include <Zelmar01/controls/DatePopup.h>
#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/NumEcran.h>
#include <Zelmar01/controls/zmCheckBox.h>
#include <Zelmar01/controls/zmDateEdit.h>
#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/controls/zmLabel.h>
#include <Zelmar01/controls/zmLookUpEd.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QBuffer>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

// Thin letters have hardly a pixel of their full colour.
constexpr double readable = 3.8;

void expectReadable(const QImage &seen, const QRect &place, const char *what, double least = readable)
{
    EXPECT_GE(Pictures::ContrastIn(seen, place), least) << what;
}

// Each of the controls in a picture of their form, without its frame.
void expectReadable(const QImage &seen, const QList<QWidget *> &controls)
{
    for (const auto *control : controls)
        expectReadable(seen, control->geometry().adjusted(2, 2, -2, -2), control->metaObject()->className());
}

template<class Control>
Control *add(Form &form, const QString &text)
{
    auto &control = form.Add<Control>();
    control.setText(text);
    return &control;
}

TzmGauge *addGauge(Form &form, int percent)
{
    auto &gauge = form.Add<TzmGauge>();
    gauge.SetProgress(percent);
    return &gauge;
}

} // namespace

TEST(Pictures, smallControlsCanBeReadInEveryPalette)
{
    Pictures::InEachPalette([](Pictures &pictures) {
        SCOPED_TRACE(pictures.Name().toStdString());
        Form form;
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
        form.Show();
        focused->setFocus(Qt::TabFocusReason);
        hot->MouseEnter();

        const auto seen = pictures.Take(form, u"controls"_s);
        expectReadable(seen, {title, link, focused, hot, stock, full, upright, number});
        // Half of the text is on the bar, half beside it.
        const auto area = roles->geometry().adjusted(2, 2, -2, -2);
        const int half = area.center().x();
        expectReadable(seen, QRect(area.topLeft(), QPoint(half - 2, area.bottom())), "on the bar");
        expectReadable(seen, QRect(half + 3, area.top(), 100, area.height()), "beside the bar");
        expectReadable(seen, disabled->geometry(), "disabled", 2);
    });
}

// Those that do not leave their painting to Qt.
TEST(Pictures, editorsCanBeReadInEveryPalette)
{
    EditorShop shop;
    const QColor gold(0xd8, 0xcf, 0xbf);
    QImage photo(120, 80, QImage::Format_RGB32);
    photo.fill(gold);
    QByteArray bytes;
    QBuffer file(&bytes);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && photo.save(&file, "PNG"));
    Pictures::InEachPalette([&](Pictures &pictures) {
        SCOPED_TRACE(pictures.Name().toStdString());
        Form form;
        form.setLocale(French);
        auto &check = form.Add<TzmCheckEdit>();
        check.setText(u"En vitrine"_s);
        check.setChecked(true);
        auto &bound = form.Add<TzmDBCheckEdit>();
        bound.setText(u"À graver"_s);
        bound.setDataSource(&shop.Source);
        bound.setDataField(u"VISIBLE"_s);
        auto &lookup = form.Add<TzmLookupEdit>();
        lookup.setListSource(&shop.MetalSource);
        lookup.setEditValue(8);
        auto &date = form.Add<tzmDateEdit>();
        date.setDate(QDate(2026, 2, 28));
        auto &image = form.Add<TzmImage>();
        image.setEditValue(bytes);
        form.resize(300, 240);
        form.Show();
        date.setFocus(Qt::TabFocusReason);
        const auto seen = pictures.Take(form, u"editors"_s);
        expectReadable(seen, {&check, &bound, &lookup, &date});

        // The picture fills its frame, and the border alone tells of the focus.
        const auto border = image.geometry().topLeft(), inside = border + QPoint(6, 6);
        const int ratio = static_cast<int>(seen.devicePixelRatio());
        EXPECT_EQ(seen.pixelColor(inside * ratio), gold);
        image.setFocus(Qt::TabFocusReason);
        const auto focused = pictures.Take(form, u"editors-image-focus"_s);
        EXPECT_EQ(focused.pixelColor(border * ratio), form.palette().color(QPalette::Highlight));
        EXPECT_EQ(focused.pixelColor(inside * ratio), gold);

        lookup.setFocus(Qt::TabFocusReason);
        lookup.showPopup();
        QCoreApplication::processEvents();
        auto *list = lookup.view()->window();
        const auto rows = pictures.Take(*list, u"lookup-list"_s);
        expectReadable(rows, list->rect().adjusted(2, 2, -20, -20), "list");
        lookup.hidePopup();

        date.DropDown();
        auto *calendar = date.findChild<TDatePopup *>();
        ASSERT_NE(calendar, nullptr);
        const auto days = pictures.Take(*calendar, u"calendar"_s);
        for (const auto *part : calendar->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            expectReadable(days, part->geometry(), part->metaObject()->className());
        calendar->close();
    });
}
