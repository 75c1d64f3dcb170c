#pragma once

#include <QPointer>
#include <QScrollArea>

class QMetaProperty;

namespace Shop {

/// The properties of an object, to be changed while it is seen: one line each, with the editor of its type.
class AppearanceEditor : public QScrollArea
{
    Q_OBJECT
public:
    explicit AppearanceEditor(QWidget *parent = nullptr);

    /// Shows those of its properties that classes below QWidget have brought.
    void Edit(QObject *object);

protected:
    void changeEvent(QEvent *event) override;

private:
    void fill();
    QWidget *makeEditor(const QMetaProperty &property);
    QWidget *makeColor(const QMetaProperty &property);
    QWidget *makeFont(const QMetaProperty &property);
    QWidget *withReset(const QMetaProperty &property, QWidget *editor);
    void set(const char *name, const QVariant &value);

    QPointer<QObject> m_object;
};

} // namespace Shop
