#include <support/Pictures.h>

#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/NumEcran.h>
#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/controls/zmLabel.h>

#include <gtest/gtest.h>

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
