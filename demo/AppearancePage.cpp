#include "AppearancePage.h"

#include "AppearanceEditor.h"

#include <Zelmar01/tabs/Backgrounds.h>
#include <Zelmar01/tabs/ExtPageControl.h>
#include <Zelmar01/tabs/ExtTabControl.h>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int widestEditor = 400;

struct TTabText
{
    QString Caption, Hint, Content;
};

// The third is disabled, the fifth hidden.
QList<TTabText> texts()
{
    return {{u"&Vente"_s, u"Vendre et encaisser"_s, u"Alliance or 18 carats"_s},
            {u"&Fiche article"_s, u"Ce qui est écrit sur l'étiquette"_s, u"0452-B"_s},
            {u"&Stock"_s, u"Réservé au gérant"_s, u"3 pièces"_s},
            {u"&Clients"_s, u"Les clients et leurs mesures"_s, u"Tour de doigt 52"_s},
            {u"&Inventaire"_s, u"Seulement en janvier"_s, u""_s}};
}

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
    : QWidget(parent), m_picture(new QLabel(this)), m_choice(new QComboBox), m_page(new QComboBox),
      m_editor(new AppearanceEditor)
{
    setObjectName(u"appearance"_s);
    m_picture->setScaledContents(true);
    m_picture->hide();
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(makeSamples(), 1);
    layout->addWidget(makeEditor());
}

TExtPageControl *AppearancePage::makeControl(const QString &name, const QString &title)
{
    auto *control = new TExtPageControl;
    control->setObjectName(name);
    QStringList hints;
    for (const auto &[caption, hint, content] : texts()) {
        auto *page = new TTabSheet(control);
        page->setObjectName(name + QString::number(control->PageCount()));
        page->setCaption(caption);
        auto *grid = new QGridLayout(page);
        grid->setContentsMargins(6, 6, 6, 6);
        if (control->PageCount() == 1)
            grid->addWidget(new QLabel(title), 0, 0);
        auto *line = new QLineEdit(content);
        line->setAccessibleName(hint);
        grid->addWidget(line, 1, 0);
        grid->setRowStretch(2, 1);
        hints << hint;
    }
    control->setTabHints(hints);
    control->Pages(2)->setEnabled(false);
    control->Pages(4)->setTabVisible(false);
    control->TabGlyphs()->setGlyph(stones(static_cast<int>(hints.size())));
    control->Hottrack()->setEnabled(true);
    m_controls << control;
    m_choice->addItem(title);
    return control;
}

QWidget *AppearancePage::makeSamples()
{
    auto *panel = new QWidget;
    auto *grid = new QGridLayout(panel);
    grid->setContentsMargins({});
    auto *top = makeControl(u"top"_s, u"En haut, images à gauche"_s);
    top->TabGlyphs()->setNumGlyphs(5);
    static_cast<QGridLayout *>(top->Pages(0)->layout())->addWidget(makeDrawnTabs(), 3, 0);

    auto *buttons = makeControl(u"buttons"_s, u"Boutons"_s);
    buttons->setTabStyle(tabStButton);
    buttons->TabGlyphs()->setNumGlyphs(5);

    auto *bottom = makeControl(u"bottom"_s, u"En bas, images au-dessus"_s);
    bottom->setTabPosition(tabPosBottom);
    bottom->TabGlyphs()->setNumGlyphs(5);
    bottom->TabGlyphs()->setPosition(glPosTop);

    auto *left = makeControl(u"left"_s, u"À gauche, sur plusieurs lignes"_s);
    left->setTabPosition(tabPosLeft);
    left->setTabWordWrap(true);
    left->TabGlyphs()->setGlyph({});

    auto *right = makeControl(u"right"_s, u"À droite, images au-dessus"_s);
    right->setTabPosition(tabPosRight);
    right->setTabWidth(90);
    right->setTabHeight(44);
    right->TabGlyphs()->setNumGlyphs(5);
    right->TabGlyphs()->setPosition(glPosTop);

    auto *picture = new TExtTabControl;
    picture->setObjectName(u"picture"_s);
    const QStringList metals{u"Or"_s, u"Argent"_s, u"Platine"_s, u"Acier"_s, u"Laiton"_s, u"Titane"_s};
    picture->setTabs(metals);
    picture->SetTabEnabled(3, false);
    picture->setMultiLine(true);
    picture->setTabWidth(90);
    picture->setTabHeight(26);
    picture->setTabInactiveColor(clNone);
    picture->setTabActiveColor(clNone);
    picture->Hottrack()->setEnabled(true);
    usePicture(*picture);
    m_controls << picture;
    m_choice->addItem(u"Sur un fond de métal"_s);

    const QList<QWidget *> samples{top, buttons, bottom, left, right, picture};
    for (int i = 0; i < samples.size(); ++i)
        grid->addWidget(samples[i], i / 2, i % 2);
    return panel;
}

// Tabs that the shop draws itself. They stand on a page of other tabs, whose colour they take over.
QWidget *AppearancePage::makeDrawnTabs()
{
    auto *drawn = new TExtTabControl;
    drawn->setObjectName(u"drawn"_s);
    drawn->setTabs({u"Or jaune"_s, u"Or rose"_s, u"Argent"_s, u"Réservé"_s});
    drawn->SetTabEnabled(3, false);
    drawn->setTabWidth(84);
    drawn->setTabHeight(28);
    // Black is to stay black, on desktops of any colour.
    drawn->setTabActiveColor(QColor(Qt::white));
    drawn->setTabInactiveColor(QColor(Qt::lightGray));
    drawn->setTabActiveFont_Color(QColor(Qt::black));
    drawn->setTabInactiveFont_Color(QColor(Qt::black));
    const QList<QColor> metals{{0xe8, 0xc8, 0x66}, {0xe6, 0xb4, 0xa0}, {0xcf, 0xd3, 0xd8}};
    connect(drawn, &TExtCustomTab::OnDrawTab, this,
            [drawn, metals](QWidget *, int tab, bool active, const TRect &content, const TRect &ground,
                            TOwnerDrawState state) {
                // The selected tab shows the whole bar, the others as much of it as they have room for.
                if (tab < metals.size())
                    ExtDrawTabGraphic(drawn->Canvas(), bar(metals[tab]), ground, active);
                drawn->DefaultDrawTab(tab, content, state);
            });
    m_controls << drawn;
    m_choice->addItem(u"Dessinés par la boutique"_s);
    return drawn;
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

QWidget *AppearancePage::makeEditor()
{
    auto *panel = new QWidget;
    panel->setMaximumWidth(widestEditor);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins({});
    m_choice->setAccessibleName(u"Contrôle à modifier"_s);
    m_page->setAccessibleName(u"Page à modifier"_s);
    layout->addWidget(m_choice);
    layout->addWidget(m_page);
    layout->addWidget(m_editor, 1);
    connect(m_choice, &QComboBox::currentIndexChanged, this, &AppearancePage::chooseControl);
    connect(m_page, &QComboBox::currentIndexChanged, this, &AppearancePage::editChosen);
    for (const auto *control : m_controls)
        connect(control, &TExtCustomTab::OnChange, m_editor, &AppearanceEditor::Read);
    chooseControl();
    return panel;
}

void AppearancePage::chooseControl()
{
    const QSignalBlocker later(m_page);
    m_page->clear();
    m_page->addItem(u"Le contrôle"_s);
    if (const auto *pages = qobject_cast<TExtPageControl *>(m_controls.value(m_choice->currentIndex()))) {
        for (int i = 0; i < pages->PageCount(); ++i)
            m_page->addItem(u"Page "_s + PlainCaption(pages->Pages(i)->Caption()),
                            QVariant::fromValue<QObject *>(pages->Pages(i)));
    }
    m_page->setVisible(m_page->count() > 1);
    editChosen();
}

void AppearancePage::editChosen()
{
    if (auto *page = m_page->currentData().value<QObject *>())
        m_editor->Edit(page, {u"enabled"_s});
    else
        m_editor->Edit(m_controls.value(m_choice->currentIndex()), {u"enabled"_s, u"layoutDirection"_s});
}

} // namespace Shop
