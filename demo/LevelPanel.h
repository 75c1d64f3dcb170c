#pragma once

#include <Zelmar01/descrtree/DescrTree.h>

#include <QGroupBox>

class QGridLayout;
class QLabel;

namespace Shop {

/// What is known of one level of the tree of codes.
class LevelPanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit LevelPanel(QWidget *parent = nullptr);

    /// `tree` may be null, and `node` none.
    void ShowLevel(const Zelmar01::TDescrTree *tree, Zelmar01::TDescrTree::TNode node);

private:
    QLabel *addRow(QGridLayout &rows, const QString &title, const QString &name);

    QLabel *m_title, *m_code, *m_longLabel, *m_shortLabel, *m_below;
};

} // namespace Shop
