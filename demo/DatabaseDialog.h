#pragma once

#include "DatabasePlace.h"

#include <QDialog>

#include <memory>

namespace Ui {
class DatabaseDialog;
}

namespace Shop {

/// Asks for the database of the shop. It stays open until one could be opened.
class DatabaseDialog : public QDialog
{
    Q_OBJECT
public:
    explicit DatabaseDialog(const TDatabasePlace &place, QWidget *parent = nullptr);
    ~DatabaseDialog() override;

    TDatabasePlace Place() const;

    void accept() override;

private:
    void browse();
    void follow();

    const std::unique_ptr<Ui::DatabaseDialog> m_ui;
};

/// Whether the database can be opened; why not is shown.
bool CanOpen(const TDatabasePlace &place);

} // namespace Shop
