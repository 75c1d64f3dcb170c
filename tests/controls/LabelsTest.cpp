#include <Zelmar01/controls/NumEcran.h>
#include <Zelmar01/controls/zmLabel.h>

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

QRect areaOfText(QWidget &label, const QColor &ground)
{
    const auto image = label.grab().toImage();
    QRect bounds;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != ground)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

} // namespace

TEST(NumEcran, standsInTheBottomRightCornerOfItsForm)
{
    QWidget form;
    auto *number = new Tzm_NumEcran(&form);
    EXPECT_EQ(number->text(), u"********"_s);
    number->setText(u"E0412"_s);
    form.resize(300, 200);
    form.show();
    QApplication::processEvents();
    EXPECT_EQ(number->geometry(), QRect(231, 0, 69, 200));
    const auto text = areaOfText(*number, form.palette().color(QPalette::Window));
    EXPECT_GT(text.left(), 69 / 3);
    EXPECT_GE(text.right(), 66);
    EXPECT_GE(text.bottom(), 200 - 5);
    EXPECT_GT(text.top(), 200 - 20);

    number->setAlign(TPlacement::alNone);
    number->setGeometry(220, 170, 69, 20);
    form.resize(400, 260);
    EXPECT_EQ(number->pos(), QPoint(320, 230));
}

TEST(ColouredLabels, haveAGroundUnlessTheyAreTransparent)
{
    QWidget form;
    auto &label = *new TCustomLabel(&form);
    label.setText(u"m"_s);
    label.resize(40, 20);
    const auto ground = [&] { return label.grab().toImage().pixelColor(39, 0); };
    const auto parents = form.palette().color(QPalette::Window);
    label.setColor(QColor(1, 2, 3));
    EXPECT_EQ(ground(), parents) << "it is transparent";
    label.setTransparent(false);
    EXPECT_EQ(ground(), QColor(1, 2, 3));
    label.setParentColor(true);
    EXPECT_EQ(ground(), parents);
}

TEST(EngravedLabel, hasAnEdgeOfItsDepth)
{
    QWidget form;
    auto &label = *new TzmLabel(&form);
    label.setText(u"Bagues && Or & <b>"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), label.text());
    const auto ground = form.palette().color(QPalette::Window);
    const auto area = [&](TzmLabel::TLabelEffect effect, int depth, Qt::Alignment alignment) {
        label.setLabelEffect(effect);
        label.setDepth(depth);
        label.setAlignment(alignment);
        label.resize(label.sizeHint() + QSize(20, 0));
        return areaOfText(label, ground).size();
    };
    for (const auto alignment : {Qt::AlignLeft | Qt::AlignTop, Qt::AlignRight | Qt::AlignBottom}) {
        const auto flat = area(TzmLabel::leNone, 2, alignment);
        for (const auto effect : {TzmLabel::leShadow, TzmLabel::leRaised, TzmLabel::leEngraved}) {
            EXPECT_EQ(area(effect, 2, alignment), flat + QSize(2, 2)) << effect;
            EXPECT_EQ(area(effect, 4, alignment), flat + QSize(4, 4)) << effect << " is cut off";
        }
    }
    EXPECT_EQ(area(TzmLabel::leEngraved, -1, Qt::AlignLeft), area(TzmLabel::leNone, 0, Qt::AlignLeft));
}

TEST(EngravedLabel, hasLinesAndAShadowWhereAFormAsksForThem)
{
    QWidget form;
    auto &label = *new TzmLabel(&form);
    label.resize(60, 30);
    const auto ground = form.palette().color(QPalette::Window);
    const auto isPainted = [&](int x, int y) { return label.grab().toImage().pixelColor(x, y) != ground; };
    EXPECT_TRUE(areaOfText(label, ground).isNull()) << "thick lines on no side";
    label.setEdges(TzmLabel::bLeft | TzmLabel::bBottom);
    EXPECT_TRUE(isPainted(1, 10) && isPainted(30, 28));
    EXPECT_FALSE(isPainted(2, 10) || isPainted(59, 10) || isPainted(30, 0));
    label.setBorderStyle(TzmLabel::lbSingle);
    EXPECT_TRUE(isPainted(0, 10));
    EXPECT_FALSE(isPainted(1, 10));
    label.setShadow(true);
    EXPECT_TRUE(isPainted(59, 20) && isPainted(20, 29) && isPainted(30, 26));
    EXPECT_FALSE(isPainted(59, 1) || isPainted(1, 29));
}
