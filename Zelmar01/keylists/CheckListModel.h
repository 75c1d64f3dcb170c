#pragma once

#include <Zelmar01/data/binding/KeyListModel.h>

#include <vector>

namespace Zelmar01 {

/// A key list whose rows can be checked, with a bit a row. Its keys are 32-bit numbers.
class TCheckListModel : public TKeyListModel
{
    Q_OBJECT
public:
    explicit TCheckListModel(QObject *parent = nullptr);

    bool IsChecked(int row) const { return m_checked[static_cast<std::size_t>(row)]; }
    void CheckAll(bool checked);
    int CheckedCount() const;
    int KeyNumber(int row) const;

    /// The keys of the rows that are checked, or not, in decimal, each followed by the separator.
    QString KeysOf(bool checked, const QString &separator) const;
    QStringList CheckedTexts() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    std::vector<bool> m_checked;
};

} // namespace Zelmar01
