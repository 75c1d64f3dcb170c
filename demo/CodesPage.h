#pragma once

#include "CodeTable.h"

#include <Zelmar01/data/Query.h>
#include <Zelmar01/descrtree/TreeViewDescr.h>

#include <QWidget>

#include <memory>

class QSettings;

namespace Ui {
class CodesPage;
}

namespace Shop {

struct TNewLevel;

/// The statistical codes of the shop: the tree of departments and sections, and what can be done with it.
class CodesPage : public QWidget
{
    Q_OBJECT
public:
    /// The codes are loaded when the page is first shown. `shop` must live longer.
    explicit CodesPage(ShopDatabase &shop, QWidget *parent = nullptr);
    ~CodesPage() override;

    void Restore(const QSettings &settings);
    void Save(QSettings &settings) const;

protected:
    void showEvent(QShowEvent *event) override;

private:
    using TNode = Zelmar01::TTreeViewDescr::TNode;

    void connectActions();
    void connectTree();

    void use(ShopDatabase &database);
    void load(bool force, const QString &before = {});
    void reload() { load(false); }
    void rebuild() { load(true); }
    void toggleTrial();
    void openTrial();

    void addDepartment();
    void addSection();
    bool add(int parent, const TNewLevel &level);
    void rename();
    void remove();

    void follow();
    void showMenu(const QPoint &place);
    QString countText() const;
    void tell(const QString &text, bool isWarning = false);
    bool isTrial() const { return m_database != &m_shop; }

    ShopDatabase &m_shop;
    std::unique_ptr<ShopDatabase> m_trial;
    ShopDatabase *m_database = &m_shop;
    Zelmar01::TQuery m_query;
    Zelmar01::TDataSource m_source;
    const std::unique_ptr<Ui::CodesPage> m_ui;
    Zelmar01::TTreeViewDescr *m_tree;
    int m_firstSelected = 0; // identifier
    bool m_isLoaded = false;
};

} // namespace Shop
