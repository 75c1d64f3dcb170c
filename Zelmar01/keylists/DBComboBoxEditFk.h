#pragma once

#include <Zelmar01/data/binding/FieldLink.h>
#include <Zelmar01/data/binding/ListLink.h>
#include <Zelmar01/keylists/ComboBoxFk.h>

#include <optional>

namespace Zelmar01 {

/// A key-bound combo box on a field that holds the key: it shows the text of the current record's key, and
/// what the user picks or types goes to the record.
///
/// The entries come from ListSource and follow its dataset, or from RemplirListe(). A null is shown as an
/// empty box, and a key that no entry has as the key itself; it stays in the record until the user picks or
/// types another entry. Picking writes the key to the field at once. A typed text is looked up on Enter, on
/// leaving the box, or before the record is posted; an empty one makes the field null, and one that no entry
/// has is refused: the focus stays in the box, with a message. Escape gives back the key that the record had
/// when the user came to the box.
class TDBComboBoxEditFk : public TComboBoxFk
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(QString KeyField READ KeyField WRITE setKeyField)
    Q_PROPERTY(QString ListField READ ListField WRITE setListField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TDBComboBoxEditFk(QWidget *parent = nullptr);

    /// The data source of the record, and its field that holds the key. The host owns both data sources.
    TDataSource *DataSource() const { return m_link->DataSource(); }
    void setDataSource(TDataSource *source) { m_link->setDataSource(source); }
    QString DataField() const { return m_link->FieldName(); }
    void setDataField(const QString &name) { m_link->setFieldName(name); }
    bool ReadOnly() const { return m_link->ReadOnly(); }
    void setReadOnly(bool readOnly) { m_link->setReadOnly(readOnly); }

    /// The data source of the entries, and its fields for key and text; the first and the second one while
    /// they are empty. Its cursor is never moved.
    TDataSource *ListSource() const { return m_listLink->ListSource(); }
    void setListSource(TDataSource *source) { m_listLink->setListSource(source); }
    QString KeyField() const { return m_listLink->KeyField(); }
    void setKeyField(const QString &name) { m_listLink->setKeyField(name); }
    QString ListField() const { return m_listLink->ListField(); }
    void setListField(const QString &name) { m_listLink->setListField(name); }

    /// Reads the list's dataset anew. The record's key, or a text being typed, stays.
    void RafraichirListe();
    void RemplirListe(TDataSet &dataSet, bool reopen) override;
    void RemplirListe(const QStringList &cles, const QStringList &libelles) override;

    /// Gives the record that key, as if the user had picked it; a key that no entry has changes nothing.
    /// Raises EDatabaseError when the field cannot be changed. Without a field it makes the entry current, no
    /// more.
    void SelectionnerCle(const QString &cle) override;

    void showPopup() override;

signals:
    /// The user, or SelectionnerCle(), has given the record another key. `nID` is its number: 0 for none, and
    /// for a key that is not a number.
    void OnChgtID(Zelmar01::TDBComboBoxEditFk *sender, qint64 nID);

protected:
    void DoExit() override;
    void Typed() override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void showField();
    void showEditing();
    void showNewList();
    void pick();
    void writeKey();
    bool takesKey(QKeyEvent &event);
    void keepEditor();
    bool isBound() const { return m_link->DataSource() && !m_link->FieldName().isEmpty(); }
    bool canChange() const { return !isBound() || m_link->CanEdit(); }

    /// What stands in the line edit while the list is filled anew.
    struct TEditor
    {
        QString Text;
        bool IsTyped;
        int Cursor, SelectionStart, SelectionLength;
    };

    TFieldLink *m_link;
    TListLink *m_listLink;
    std::optional<TEditor> m_kept;
};

} // namespace Zelmar01
