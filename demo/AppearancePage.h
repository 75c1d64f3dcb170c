#pragma once

#include <QWidget>

class QComboBox;
class QLabel;

namespace Zelmar01 {

class TExtCustomTab;
class TExtPageControl;

} // namespace Zelmar01

namespace Shop {

class AppearanceEditor;

/// The looks of tabs: a control for each side and style, and the properties of one of them and of its
/// pages, which can be changed while it is seen.
class AppearancePage : public QWidget
{
    Q_OBJECT
public:
    explicit AppearancePage(QWidget *parent = nullptr);

private:
    Zelmar01::TExtPageControl *makeControl(const QString &name, const QString &title);
    QWidget *makeSamples();
    QWidget *makeDrawnTabs();
    QWidget *makeEditor();
    void usePicture(Zelmar01::TExtCustomTab &control);
    void chooseControl();
    void editChosen();

    QList<Zelmar01::TExtCustomTab *> m_controls;
    QLabel *m_picture;
    qint64 m_picturesPalette = 0;
    QComboBox *m_choice, *m_page;
    AppearanceEditor *m_editor;
};

} // namespace Shop
