#pragma once

#include <QPointer>
#include <QScrollArea>

#include <functional>
#include <vector>

class QMetaProperty;

namespace Shop {

/// The properties of an object, to be changed while it is seen: one line each, with the editor of its type. A
/// change is made at once, and all editors show what has become of the object.
class AppearanceEditor : public QScrollArea
{
    Q_OBJECT
public:
    explicit AppearanceEditor(QWidget *parent = nullptr);

    /// Shows the properties that classes below QWidget have brought, and those that are named.
    void Edit(QObject *object, const QStringList &more);
    /// Shows the values again, when they have been changed elsewhere.
    void Read();

protected:
    void changeEvent(QEvent *event) override;

private:
    QWidget *makeEditor(const QMetaProperty &property);
    QWidget *makeLines(const char *name);
    QWidget *makeChoice(const QMetaProperty &property);
    QWidget *makeColor(const char *name);
    QWidget *makeFont(const char *name);
    QWidget *makePicture(const char *name);
    QWidget *withReset(const QMetaProperty &property, QWidget *editor);
    QVariant value(const char *name) const;
    void set(const char *name, const QVariant &value);
    void showsBy(std::function<void()> reader);

    QPointer<QObject> m_object;
    std::vector<std::function<void()>> m_readers;
};

} // namespace Shop
