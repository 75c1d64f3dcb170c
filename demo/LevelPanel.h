#pragma once

#include <Zelmar01/descrtree/DescrTree.h>

#include <QGroupBox>

#include <memory>

namespace Ui {
class LevelPanel;
}

namespace Shop {

/// What is known of one level of the tree of codes.
class LevelPanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit LevelPanel(QWidget *parent = nullptr);
    ~LevelPanel() override;

    /// `tree` may be null, and `node` none.
    void ShowLevel(const Zelmar01::TDescrTree *tree, Zelmar01::TDescrTree::TNode node);

private:
    const std::unique_ptr<Ui::LevelPanel> m_ui;
};

} // namespace Shop
