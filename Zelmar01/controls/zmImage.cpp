#include <Zelmar01/controls/zmImage.h>

#include "ControlsAccessible.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/WidgetBoxes.h>

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QFileDialog>
#include <QImageReader>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QSaveFile>
#include <QStyleOptionFocusRect>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr QSize usualSize{140, 90};
constexpr int jpegQuality = 90;

QImage pictureOf(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true); // the camera's way up
    return reader.read();
}

QByteArray bytesOf(const QImage &picture, const QString &graphicClassName)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (graphicClassName == "TsdJpegGraphic"_L1)
        picture.save(&buffer, "JPEG", jpegQuality);
    else
        picture.save(&buffer, graphicClassName == "TBitmap"_L1 ? "BMP" : "PNG");
    return bytes;
}

[[noreturn]] void refuse(const QString &what, const QString &name, const QString &why)
{
    throw EInOutError(what.toStdString(), {0, (name + u" : "_s + why).toStdString(), {}});
}

} // namespace

TzmImage::TzmImage(QWidget *parent) : QFrame(parent)
{
    UseMessageBoxes();
    InstallControlsAccessibility();
    take({});
    setFocusPolicy(Qt::StrongFocus);
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    resetGraphicClassName();
}

void TzmImage::setEditValue(const QVariant &value)
{
    const auto bytes = value.toByteArray();
    if (bytes == m_bytes)
        return;
    take(bytes);
    emit OnEditValueChanged();
}

// Given by the user.
void TzmImage::choose(const QByteArray &bytes)
{
    if (m_readOnly || bytes == m_bytes)
        return;
    take(bytes);
    emit OnChange();
    emit OnEditValueChanged();
}

void TzmImage::take(const QByteArray &bytes)
{
    m_bytes = bytes;
    m_picture = pictureOf(bytes);
    setAccessibleDescription(
        m_bytes.isEmpty()    ? tr("Aucune image")
        : m_picture.isNull() ? tr("Image illisible")
                             : tr("Image de %1 × %2 points").arg(m_picture.width()).arg(m_picture.height()));
    update();
}

void TzmImage::setShowFocusRect(bool show)
{
    m_showFocusRect = show;
    update();
}

void TzmImage::setStretch(bool stretch)
{
    m_stretch = stretch;
    update();
}

void TzmImage::CopyToClipboard() const
{
    if (!m_picture.isNull())
        QApplication::clipboard()->setImage(m_picture);
}

void TzmImage::PasteFromClipboard()
{
    const auto *clip = QApplication::clipboard()->mimeData();
    if (clip && clip->hasImage())
        choose(bytesOf(clip->imageData().value<QImage>(), m_graphicClassName));
    else if (clip && clip->hasUrls() && clip->urls().first().isLocalFile())
        LoadFromFile(clip->urls().first().toLocalFile());
}

void TzmImage::LoadFromFile(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        refuse(tr("L'image ne peut pas être lue"), name, file.errorString());
    const auto bytes = file.readAll();
    if (pictureOf(bytes).isNull())
        refuse(tr("Ce fichier n'est pas une image"), name, tr("format inconnu ou fichier abîmé"));
    choose(bytes);
}

void TzmImage::SaveToFile(const QString &name) const
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_bytes) != m_bytes.size() || !file.commit())
        refuse(tr("L'image ne peut pas être enregistrée"), name, file.errorString());
}

void TzmImage::load()
{
    QStringList patterns;
    for (const auto &format : QImageReader::supportedImageFormats())
        patterns << u"*."_s + QString::fromLatin1(format);
    const auto name = QFileDialog::getOpenFileName(this, tr("Charger une image"), {},
                                                   tr("Images (%1)").arg(patterns.join(u' ')));
    if (!name.isEmpty())
        LoadFromFile(name);
}

void TzmImage::save()
{
    const auto name = QFileDialog::getSaveFileName(this, tr("Enregistrer l'image"));
    if (!name.isEmpty())
        SaveToFile(name);
}

void TzmImage::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString &text, bool enabled, auto work) {
        menu->addAction(text, this, [work] { ShowingExceptions(work); })->setEnabled(enabled);
    };
    const auto *clip = QApplication::clipboard()->mimeData();
    const bool canPaste = !m_readOnly && clip && (clip->hasImage() || clip->hasUrls());
    const bool isThere = !m_bytes.isEmpty();
    add(tr("Co&uper"), isThere && !m_readOnly, [this] {
        CopyToClipboard();
        choose({});
    });
    add(tr("&Copier"), isThere, [this] { CopyToClipboard(); });
    add(tr("C&oller"), canPaste, [this] { PasteFromClipboard(); });
    add(tr("&Supprimer"), isThere && !m_readOnly, [this] { choose({}); });
    menu->addSeparator();
    add(tr("C&harger…"), !m_readOnly, [this] { load(); });
    add(tr("&Enregistrer sous…"), isThere, [this] { save(); });
    menu->popup(event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(rect().center())
                                                               : event->globalPos());
}

void TzmImage::keyPressEvent(QKeyEvent *event)
{
    bool isTaken = false;
    ShowingExceptions([&] { isTaken = takesKey(*event); });
    if (!isTaken)
        QFrame::keyPressEvent(event);
}

bool TzmImage::takesKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Copy) || event.matches(QKeySequence::Cut))
        CopyToClipboard();
    else if (event.matches(QKeySequence::Paste))
        PasteFromClipboard();
    else if (!event.matches(QKeySequence::Delete))
        return false;
    if (event.matches(QKeySequence::Cut) || event.matches(QKeySequence::Delete))
        choose({});
    return true;
}

void TzmImage::focusInEvent(QFocusEvent *event)
{
    QFrame::focusInEvent(event);
    update();
}

void TzmImage::focusOutEvent(QFocusEvent *event)
{
    QFrame::focusOutEvent(event);
    update();
}

void TzmImage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const auto place = contentsRect();
    painter.fillRect(place, palette().color(QPalette::Base));
    if (!m_picture.isNull()) {
        painter.save();
        painter.setClipRect(place);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const auto natural = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, m_picture.size(), place);
        painter.drawImage(m_stretch ? place : natural, m_picture);
        painter.restore();
    } else if (!m_bytes.isEmpty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, tr("Image illisible"));
    }
    if (m_showFocusRect && hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = place;
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
    drawFrame(&painter);
    // The control's own border tells of the focus, as that of the fields beside it does.
    if (hasFocus() && frameWidth() > 0) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(frameRect().adjusted(0, 0, -1, -1));
    }
}

QSize TzmImage::sizeHint() const
{
    return usualSize.expandedTo(QFrame::sizeHint());
}

} // namespace Zelmar01
