#include "MainWindow.h"

#include "AppearancePage.h"
#include "CodesPage.h"
#include "ControlsPage.h"
#include "DatabaseDialog.h"
#include "LargeText.h"
#include "ListsPage.h"
#include "ShopDatabase.h"
#include "TasksPage.h"
#include "ui_MainWindow.h"

#include <QScreen>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

const QString geometryKey = u"Window/Geometry"_s;

constexpr QSize startSize(1280, 760);

} // namespace

MainWindow::MainWindow(TillPage::TClock clock, ShopDatabase &database, QSettings *settings)
    : m_settings(settings), m_ui(std::make_unique<Ui::MainWindow>()), m_till(new TillPage(std::move(clock))),
      m_codes(new CodesPage(database)), m_tasks(new TasksPage(database))
{
    m_ui->setupUi(this);
    MakeLarge(*m_ui->shopName, 1.3);
    // In the order of the list.
    for (QWidget *page :
         {static_cast<QWidget *>(m_till), static_cast<QWidget *>(m_codes),
          static_cast<QWidget *>(new ListsPage(database)), static_cast<QWidget *>(m_tasks),
          static_cast<QWidget *>(new AppearancePage), static_cast<QWidget *>(new ControlsPage(database))}) {
        page->layout()->setContentsMargins({});
        m_ui->stack->addWidget(page);
    }
    arrangeList();
    const auto place = database.Place();
    m_ui->chooseDatabase->setToolTip(u"Ouverte : %1"_s.arg(place.Title()));
    connect(m_ui->chooseDatabase, &QPushButton::clicked, this, [this, place] { chooseDatabase(place); });
    connect(m_ui->pages, &QListWidget::currentRowChanged, m_ui->stack, &QStackedWidget::setCurrentIndex);
    m_ui->pages->setCurrentRow(0);
    m_till->setFocus();
    resize(startSize.boundedTo(screen()->availableSize()));
    if (m_settings) {
        m_till->Restore(*m_settings);
        m_codes->Restore(*m_settings);
        restoreGeometry(m_settings->value(geometryKey).toByteArray());
    }
}

MainWindow::~MainWindow() = default;

// As wide as the longest title, in the desktop's letters.
void MainWindow::arrangeList()
{
    auto &list = *m_ui->pages;
    int widest = m_ui->shopName->sizeHint().width();
    for (int row = 0; row < list.count(); ++row) {
        list.item(row)->setSizeHint({0, list.fontMetrics().height() * 2});
        widest = qMax(widest, list.fontMetrics().horizontalAdvance(list.item(row)->text()));
    }
    list.setFixedWidth(widest + 2 * list.frameWidth() + 16);
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
    for (int i = 0; i < m_ui->stack->count(); ++i)
        pages << m_ui->stack->widget(i);
    return pages;
}

void MainWindow::ShowPage(QWidget *page)
{
    m_ui->pages->setCurrentRow(m_ui->stack->indexOf(page));
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
