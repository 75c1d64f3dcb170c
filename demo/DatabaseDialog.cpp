#include "DatabaseDialog.h"

#include "BusyCursor.h"
#include "ui_DatabaseDialog.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/data/Connection.h>

#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QSqlDatabase>
#include <QStandardItemModel>

#include <array>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

// In the order of the list and of the pages of the form.
constexpr std::array drivers{"QSQLITE"_L1, "QPSQL"_L1, "QODBC"_L1};
enum { SQLitePage, PostgreSQLPage, OdbcPage };

constexpr int usualPort = 5432;

} // namespace

DatabaseDialog::DatabaseDialog(const TDatabasePlace &place, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::DatabaseDialog>())
{
    m_ui->setupUi(this);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(u"&Ouvrir"_s);
    m_ui->buttons->button(QDialogButtonBox::Cancel)->setText(u"A&nnuler"_s);

    const auto installed = QSqlDatabase::drivers();
    auto *engines = qobject_cast<QStandardItemModel *>(m_ui->engine->model());
    for (int i = 0; i < int(drivers.size()); ++i) {
        if (installed.contains(drivers[std::size_t(i)]))
            continue;
        engines->item(i)->setEnabled(false);
        engines->item(i)->setToolTip(
            u"Le pilote %1 de Qt n'est pas installé sur ce poste."_s.arg(drivers[std::size_t(i)]));
    }

    const auto page = std::find(drivers.begin(), drivers.end(), place.Driver) - drivers.begin();
    m_ui->engine->setCurrentIndex(page < int(drivers.size()) ? int(page) : SQLitePage);
    (page == OdbcPage         ? m_ui->source
     : page == PostgreSQLPage ? m_ui->database
                              : m_ui->file)
        ->setText(place.Database);
    m_ui->host->setText(place.Host);
    m_ui->port->setValue(place.Port > 0 ? place.Port : usualPort);
    (page == OdbcPage ? m_ui->odbcUser : m_ui->user)->setText(place.User);

    connect(m_ui->engine, &QComboBox::currentIndexChanged, this, &DatabaseDialog::follow);
    for (auto *line : {m_ui->file, m_ui->database, m_ui->source})
        connect(line, &QLineEdit::textChanged, this, &DatabaseDialog::follow);
    connect(m_ui->browse, &QAbstractButton::clicked, this, &DatabaseDialog::browse);
    follow();
}

DatabaseDialog::~DatabaseDialog() = default;

TDatabasePlace DatabaseDialog::Place() const
{
    TDatabasePlace place;
    const int page = m_ui->engine->currentIndex();
    place.Driver = drivers[std::size_t(page)];
    switch (page) {
    case PostgreSQLPage:
        place.Database = m_ui->database->text().trimmed();
        place.Host = m_ui->host->text().trimmed();
        place.Port = m_ui->port->value();
        place.User = m_ui->user->text();
        place.Password = m_ui->password->text();
        break;
    case OdbcPage:
        place.Database = m_ui->source->text().trimmed();
        place.User = m_ui->odbcUser->text();
        place.Password = m_ui->odbcPassword->text();
        break;
    default:
        place.Database = QDir::fromNativeSeparators(m_ui->file->text().trimmed());
    }
    return place;
}

void DatabaseDialog::accept()
{
    if (CanOpen(Place()))
        QDialog::accept();
}

void DatabaseDialog::browse()
{
    const auto file = QFileDialog::getSaveFileName(
        this, u"Base de données de la bijouterie"_s, m_ui->file->text(),
        u"Bases SQLite (*.db *.sqlite);;Tous les fichiers (*)"_s, nullptr, QFileDialog::DontConfirmOverwrite);
    if (!file.isEmpty())
        m_ui->file->setText(QDir::toNativeSeparators(file));
}

void DatabaseDialog::follow()
{
    m_ui->places->setCurrentIndex(m_ui->engine->currentIndex());
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(!Place().Database.isEmpty());
}

bool CanOpen(const TDatabasePlace &place)
{
    bool opened = false;
    ShowingExceptions([&] {
        const BusyCursor busy;
        TConnection connection;
        UsePlace(place, connection);
        connection.Open();
        opened = connection.Connected();
    });
    return opened;
}

} // namespace Shop
