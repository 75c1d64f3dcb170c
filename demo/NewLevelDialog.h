#pragma once

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class NewLevelDialog;
}

namespace Shop {

/// What a user says of a new level.
struct TNewLevel
{
    QString Code, Label, ShortLabel;
};

/// Asks for a new level. It stays open until the level could be added.
class NewLevelDialog : public QDialog
{
    Q_OBJECT
public:
    /// Adds the level and tells whether that succeeded. What it raises is shown.
    using TAdd = std::function<bool(const TNewLevel &)>;

    /// `place` says where the level will be, and `code` is proposed.
    NewLevelDialog(const QString &title, const QString &place, const QString &code, TAdd add,
                   QWidget *parent);
    ~NewLevelDialog() override;

    void accept() override;

private:
    void proposeShortLabel(const QString &label);

    const TAdd m_add;
    const std::unique_ptr<Ui::NewLevelDialog> m_ui;
    bool m_ownShortLabel = false;
};

} // namespace Shop
