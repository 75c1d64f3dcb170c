#include "AppearancePage.h"

#include "ui_AppearancePage.h"

#include <Zelmar01/tabs/Backgrounds.h>

#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int pages = 5;

// A stone a tab, each in a colour of its own, on the colour that is left out.
QPixmap stones(int count)
{
    constexpr int size = 16;
    QPixmap strip(size * count, size);
    strip.fill(clFuchsia.Resolved({}));
    QPainter painter(&strip);
    const QPoint outline[] = {{8, 14}, {1, 6}, {4, 2}, {12, 2}, {15, 6}};
    const QPoint facet[] = {{8, 14}, {5, 6}, {11, 6}};
    for (int i = 0; i < count; ++i) {
        const auto color = QColor::fromHsv(i * 71 % 360, 170, 210);
        painter.setPen(color.darker(170));
        painter.setBrush(color);
        painter.drawPolygon(outline, 5);
        painter.setBrush(color.lighter(140));
        painter.drawPolygon(facet, 3);
        painter.drawLine(1, 6, 15, 6);
        painter.translate(size, 0);
    }
    return strip;
}

// Brushed metal, in the colours of the desktop.
QPixmap metal(const QPalette &palette, QSize size)
{
    QPixmap picture(size);
    QLinearGradient light(0, 0, size.width(), size.height());
    light.setColorAt(0, palette.color(QPalette::Light));
    light.setColorAt(0.45, palette.color(QPalette::Window));
    light.setColorAt(0.55, palette.color(QPalette::Mid));
    light.setColorAt(1, palette.color(QPalette::Window));
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), light);
    auto line = palette.color(QPalette::Midlight);
    line.setAlphaF(0.4F);
    painter.setPen(line);
    for (int y = 0; y < size.height(); y += 3)
        painter.drawLine(0, y, size.width(), y);
    return picture;
}

// A bar of a precious metal, which tabs are cut from.
QPixmap bar(const QColor &color)
{
    QPixmap picture(96, 32);
    QLinearGradient light(0, 0, 0, picture.height());
    light.setColorAt(0, color);
    light.setColorAt(0.35, color.lighter(130));
    light.setColorAt(1, color.darker(115));
    QPainter(&picture).fillRect(picture.rect(), light);
    return picture;
}

} // namespace

AppearancePage::AppearancePage(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::AppearancePage>()), m_picture(new QLabel(this))
{
    m_ui->setupUi(this);
    setObjectName(u"appearance"_s);
    setFocusProxy(m_ui->top);
    m_picture->setScaledContents(true);
    m_picture->hide();
    m_controls = {m_ui->top,  m_ui->drawn, m_ui->buttons, m_ui->bottom,
                  m_ui->left, m_ui->right, m_ui->picture};
    for (auto *control : {m_ui->top, m_ui->buttons, m_ui->bottom, m_ui->right})
        control->TabGlyphs()->setGlyph(stones(pages));
    drawTabs(*m_ui->drawn);
    m_ui->picture->SetTabEnabled(3, false);
    usePicture(*m_ui->picture);

    connect(m_ui->control, &QComboBox::currentIndexChanged, this, &AppearancePage::chooseControl);
    connect(m_ui->page, &QComboBox::currentIndexChanged, this, &AppearancePage::editChosen);
    for (const auto *control : m_controls)
        connect(control, &TExtCustomTab::OnChange, m_ui->editor, &AppearanceEditor::Read);
    chooseControl();
}

AppearancePage::~AppearancePage() = default;

// Tabs that the shop draws itself. They stand on a page of other tabs, whose colour they take over.
void AppearancePage::drawTabs(TExtTabControl &control)
{
    control.SetTabEnabled(3, false);
    const QList<QColor> metals{{0xe8, 0xc8, 0x66}, {0xe6, 0xb4, 0xa0}, {0xcf, 0xd3, 0xd8}};
    connect(&control, &TExtCustomTab::OnDrawTab, this,
            [drawn = &control, metals](QWidget *, int tab, bool active, const TRect &content,
                                       const TRect &ground, TOwnerDrawState state) {
                // The selected tab shows the whole bar, the others as much of it as they have room for.
                if (tab < metals.size())
                    ExtDrawTabGraphic(drawn->Canvas(), bar(metals[tab]), ground, active);
                drawn->DefaultDrawTab(tab, content, state);
            });
}

// The picture lies below the whole page, and this control lets it through.
void AppearancePage::usePicture(TExtCustomTab &control)
{
    const auto prepare = [this] {
        if (m_picture->size() == size() && m_picturesPalette == palette().cacheKey())
            return;
        m_picture->setGeometry(rect());
        m_picture->setPixmap(metal(palette(), size()));
        m_picturesPalette = palette().cacheKey();
    };
    connect(&control, &TExtCustomTab::OnDrawBkgndInside, this,
            [this, prepare](QWidget *sender, QPainter *painter, int, const TRect &rect) {
                prepare();
                ExtDrawBkgndImage(sender, painter, rect, m_picture);
            });
    connect(&control, &TExtCustomTab::OnDrawBkgndOutside, this,
            [this, prepare](QWidget *sender, QPainter *painter, const QRegion &region) {
                prepare();
                ExtDrawBkgndImageRgn(sender, painter, region, m_picture);
            });
}

void AppearancePage::chooseControl()
{
    const QSignalBlocker later(m_ui->page);
    m_ui->page->clear();
    m_ui->page->addItem(u"Le contrôle"_s);
    if (const auto *chosen =
            qobject_cast<TExtPageControl *>(m_controls.value(m_ui->control->currentIndex()))) {
        for (int i = 0; i < chosen->PageCount(); ++i)
            m_ui->page->addItem(u"Page "_s + PlainCaption(chosen->Pages(i)->Caption()),
                                QVariant::fromValue<QObject *>(chosen->Pages(i)));
    }
    m_ui->page->setVisible(m_ui->page->count() > 1);
    editChosen();
}

void AppearancePage::editChosen()
{
    if (auto *page = m_ui->page->currentData().value<QObject *>())
        m_ui->editor->Edit(page, {u"enabled"_s});
    else
        m_ui->editor->Edit(m_controls.value(m_ui->control->currentIndex()),
                           {u"enabled"_s, u"layoutDirection"_s});
}

} // namespace Shop
