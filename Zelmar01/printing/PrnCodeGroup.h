#pragma once

#include <Zelmar01/printing/PrinterCodes.h>

#include <QGroupBox>

#include <array>

class QGridLayout;

namespace Zelmar01 {

class TPrnCodeBox;

/// The 23 boxes of the codes dialog with their labels, in three columns. A box is named after its code
/// ("IniEdit") and says its place to a screen reader ("Bold ON").
class TPrnCodeGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit TPrnCodeGroup(QWidget *parent = nullptr);

    /// The boxes, in the order of PrinterCodeFields().
    const std::array<TPrnCodeBox *, PrinterCodeCount> &Boxes() const { return m_boxes; }

private:
    void addBoxes(QGridLayout &grid);
    void addLabels(QGridLayout &grid);

    std::array<TPrnCodeBox *, PrinterCodeCount> m_boxes{};
};

} // namespace Zelmar01
