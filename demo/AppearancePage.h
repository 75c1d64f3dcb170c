#pragma once

#include <QWidget>

#include <memory>

class QLabel;

namespace Ui {
class AppearancePage;
}

namespace Zelmar01 {
class TExtCustomTab;
class TExtTabControl;
} // namespace Zelmar01

namespace Shop {

/// The looks of tabs: a control for each side and style, and the properties of one of them and of its
/// pages, which can be changed while it is seen.
class AppearancePage : public QWidget
{
    Q_OBJECT
public:
    explicit AppearancePage(QWidget *parent = nullptr);
    ~AppearancePage() override;

private:
    void drawTabs(Zelmar01::TExtTabControl &control);
    void usePicture(Zelmar01::TExtCustomTab &control);
    void chooseControl();
    void editChosen();

    const std::unique_ptr<Ui::AppearancePage> m_ui;
    QList<Zelmar01::TExtCustomTab *> m_controls; ///< in the order of the form's list
    QLabel *m_picture;
    qint64 m_picturesPalette = 0;
};

} // namespace Shop
