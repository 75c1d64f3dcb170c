#include "MainWindow.h"

#include "AppearancePage.h"
#include "CodesPage.h"
#include "ControlsPage.h"
#include "DatabaseDialog.h"
#include "ListsPage.h"
#include "ShopDatabase.h"
#include "TasksPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

const QString geometryKey = u"Window/Geometry"_s;

constexpr QSize startSize(1280, 760);

} // namespace

MainWindow::MainWindow(TillPage::TClock clock, ShopDatabase &database, QSettings *settings)
    : m_settings(settings), m_list(new QListWidget), m_stack(new QStackedWidget),
      m_till(new TillPage(std::move(clock))), m_codes(new CodesPage(database)),
      m_tasks(new TasksPage(database))
{
    setWindowTitle(u"Bijouterie"_s);
    m_list->setObjectName(u"pages"_s);
    m_list->setAccessibleName(u"Pages"_s);
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_list->setSpacing(2);

    auto *name = new QLabel(u"Bijouterie\nZelmar"_s);
    auto font = name->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    name->setFont(font);
    name->setContentsMargins(4, 4, 4, 8);

    auto *centre = new QWidget;
    auto *side = new QVBoxLayout;
    side->addWidget(name);
    side->addWidget(m_list, 1);
    side->addWidget(makeDatabaseButton(database.Place()));
    auto *layout = new QHBoxLayout(centre);
    layout->addLayout(side);
    layout->addWidget(m_stack, 1);
    setCentralWidget(centre);

    addPage(u"Caisse"_s, m_till);
    addPage(u"Codes statistiques"_s, m_codes);
    addPage(u"Listes"_s, new ListsPage(database));
    addPage(u"Tâches planifiées"_s, m_tasks);
    addPage(u"Apparence"_s, new AppearancePage);
    addPage(u"Contrôles"_s, new ControlsPage(database));
    m_list->setFixedWidth(
        qMax(m_list->fontMetrics().horizontalAdvance(u"Codes statistiques"_s), name->sizeHint().width()) +
        2 * m_list->frameWidth() + 16);
    connect(m_list, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    m_list->setCurrentRow(0);
    m_till->setFocus();
    resize(startSize.boundedTo(screen()->availableSize()));
    if (m_settings) {
        m_till->Restore(*m_settings);
        m_codes->Restore(*m_settings);
        restoreGeometry(m_settings->value(geometryKey).toByteArray());
    }
}

void MainWindow::addPage(const QString &title, QWidget *page)
{
    auto *item = new QListWidgetItem(title, m_list);
    item->setSizeHint({0, m_list->fontMetrics().height() * 2});
    page->layout()->setContentsMargins({});
    m_stack->addWidget(page);
}

QPushButton *MainWindow::makeDatabaseButton(const TDatabasePlace &place)
{
    auto *button = new QPushButton(u"&Base de données…"_s);
    button->setObjectName(u"chooseDatabase"_s);
    button->setToolTip(u"Ouverte : %1"_s.arg(place.Title()));
    connect(button, &QPushButton::clicked, this, [this, place] { chooseDatabase(place); });
    return button;
}

void MainWindow::chooseDatabase(const TDatabasePlace &place)
{
    DatabaseDialog dialog(place, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_newPlace = dialog.Place();
    if (!close())
        m_newPlace.reset();
}

QList<QWidget *> MainWindow::Pages() const
{
    QList<QWidget *> pages;
    for (int i = 0; i < m_stack->count(); ++i)
        pages << m_stack->widget(i);
    return pages;
}

void MainWindow::ShowPage(QWidget *page)
{
    m_list->setCurrentRow(m_stack->indexOf(page));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_settings) {
        m_till->Save(*m_settings);
        m_codes->Save(*m_settings);
        m_settings->setValue(geometryKey, saveGeometry());
    }
    QMainWindow::closeEvent(event);
}

} // namespace Shop
