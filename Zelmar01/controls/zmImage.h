#pragma once

#include <Zelmar01/controls/DataAware.h>

#include <QByteArray>
#include <QFrame>
#include <QImage>
#include <QVariant>

namespace Zelmar01 {

/// A picture, as the bytes of a file: JPEG and every other format that Qt reads. It is stretched over the
/// whole of the control.
///
/// Users copy, paste and delete it with the usual keys and the menu, which also loads and saves files. The
/// bytes of a file stay as they are; a picture that comes without a file, as from a painting program, is kept
/// in the format that GraphicClassName names.
class TzmImage : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(
        QString GraphicClassName READ GraphicClassName WRITE setGraphicClassName RESET resetGraphicClassName)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly RESET resetReadOnly)
    Q_PROPERTY(bool ShowFocusRect READ ShowFocusRect WRITE setShowFocusRect RESET resetShowFocusRect)
    Q_PROPERTY(bool Stretch READ Stretch WRITE setStretch RESET resetStretch)
    Q_PROPERTY(QVariant EditValue READ EditValue WRITE setEditValue NOTIFY OnEditValueChanged
                   DESIGNABLE false STORED false)
public:
    explicit TzmImage(QWidget *parent = nullptr);

    /// The bytes; invalid for no picture.
    QVariant EditValue() const { return m_bytes.isEmpty() ? QVariant() : QVariant(m_bytes); }
    void setEditValue(const QVariant &bytes);
    /// The picture; null when there is none, or when the bytes cannot be read as one.
    const QImage &Picture() const { return m_picture; }

    /// The format of pictures that come without a file: "TsdJpegGraphic" (JPEG), "TBitmap" (BMP), and PNG for
    /// any other name.
    QString GraphicClassName() const { return m_graphicClassName; }
    void setGraphicClassName(const QString &name) { m_graphicClassName = name; }
    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
    /// Whether a second frame, over the picture, shows the focus; the border of the control always does.
    bool ShowFocusRect() const { return m_showFocusRect; }
    void setShowFocusRect(bool show);
    /// Whether the picture fills the control; else it stands in its middle in its own size.
    bool Stretch() const { return m_stretch; }
    void setStretch(bool stretch);

    /// What the menu's entries do. The last two raise EInOutError; LoadFromFile also for a file that is no
    /// picture.
    void CopyToClipboard() const;
    void PasteFromClipboard();
    void LoadFromFile(const QString &name);
    void SaveToFile(const QString &name) const;

    QSize sizeHint() const override;

signals:
    /// The user has given it another picture, or none.
    void OnChange();
    /// There is a new picture: from the user, or from a host.
    void OnEditValueChanged();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void choose(const QByteArray &bytes);
    void take(const QByteArray &bytes);
    void load();
    void save();
    bool takesKey(const QKeyEvent &event);

    void resetGraphicClassName() { setGraphicClassName(QStringLiteral("TsdJpegGraphic")); }
    void resetReadOnly() { setReadOnly(false); }
    void resetShowFocusRect() { setShowFocusRect(false); }
    void resetStretch() { setStretch(true); }

    QByteArray m_bytes;
    QImage m_picture;
    QString m_graphicClassName;
    bool m_readOnly = false, m_showFocusRect = false, m_stretch = true;
};

/// The picture on a field of bytes.
class TzmDBImage : public TDataAware<TzmImage>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TzmDBImage(QWidget *parent = nullptr) : TDataAware(parent) {}
};

} // namespace Zelmar01
