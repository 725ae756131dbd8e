#pragma once

#include <QByteArray>
#include <QHash>
#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <QtDesigner/QDesignerDynamicPropertySheetExtension>
#include <QtDesigner/QDesignerPropertySheetExtension>

#include <vector>

class QDesignerFormEditorInterface;

namespace zk {

class FormKeeper;

/// What Qt Designer's property editor shows of one of our components, and what of it goes into the form's file.
///
/// Designer's own sheet does the work for everything that it knows. Upon it
/// - a reference to another component is that component's name,
/// - a text is plain bytes: nothing that a translator would be given, or a change of language would set again,
/// - the properties of owned objects stand under their path: `Attributes.Material.Ambient`,
/// - a component that is no widget keeps to itself what the widget that stands for it has from QWidget.
class ComponentSheet : public QObject,
                       public QDesignerPropertySheetExtension,
                       public QDesignerDynamicPropertySheetExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerPropertySheetExtension QDesignerDynamicPropertySheetExtension)
  public:
    /// `base` is Designer's sheet for the widget, and `pristine` a component of the same class that nobody changes,
    /// whose values are the defaults.
    ComponentSheet(QDesignerFormEditorInterface* core, QWidget* widget, QDesignerPropertySheetExtension* base,
                   const QObject* pristine, QObject* parent);
    ~ComponentSheet() override;

    /// The sheet of a widget, or null if it is none of ours.
    static ComponentSheet* Of(const QObject* widget);
    /// Those of all forms, in no order.
    static QList<ComponentSheet*> All();

    QWidget* Widget() const { return widget_; }
    /// The form that the widget is on, or null.
    FormKeeper* Keeper() const;

    enum class Kind {
        Plain,      ///< as Designer has it
        Text,       ///< plain bytes
        List,       ///< lines of text
        Reference,  ///< the name of another component
        Trigger,    ///< writing it sets others, and it reads as the default again
        Owned,      ///< an owned object, shown through its own properties only
        Foreign,    ///< of the widget that stands for the component, and of no meaning to it
    };
    /// Null for an index outside.
    Kind KindOf(int index) const;

    /// Whether a property is the name of a picture file.
    bool IsPicture(int index) const;

    /// The names of what a reference may refer to, in the form's order. Not the component itself.
    QStringList Candidates(int index) const;
    /// What a reference refers to now, or null.
    QWidget* Target(int index) const;
    /// Binds the component as its references say; to nothing where it has been deleted from the form. True if that is
    /// something else than before.
    bool Resolve();
    /// Components were pasted together, and got other names than they had: references among them follow.
    void Follow(const QHash<QString, QString>& newNames);

    int count() const override;
    int indexOf(const QString& name) const override;
    QString propertyName(int index) const override;
    QString propertyGroup(int index) const override;
    void setPropertyGroup(int index, const QString& group) override;
    bool hasReset(int index) const override;
    bool reset(int index) override;
    bool isVisible(int index) const override;
    void setVisible(int index, bool visible) override;
    bool isAttribute(int index) const override;
    void setAttribute(int index, bool attribute) override;
    QVariant property(int index) const override;
    void setProperty(int index, const QVariant& value) override;
    bool isChanged(int index) const override;
    void setChanged(int index, bool changed) override;
    bool isEnabled(int index) const override;

    bool dynamicPropertiesAllowed() const override { return true; }
    int addDynamicProperty(const QString& name, const QVariant& value) override;
    bool removeDynamicProperty(int index) override;
    bool isDynamicProperty(int index) const override;
    bool canAddDynamicProperty(const QString& name) const override;

  private:
    struct Field {
        Kind kind;
        QString name;
        QString group;                           ///< empty: the base sheet's
        QPointer<QObject> object;                ///< whose property it is
        QPointer<const QObject> pristine;        ///< the same of the component that nobody changes
        QMetaProperty property;                  ///< of `object`
        QDesignerPropertySheetExtension* sheet;  ///< Designer's sheet of the widget or of the owned object
        int index;                               ///< there
        bool nested;
        QByteArray text;                ///< a reference's name; a text that the component refused
        QPointer<QWidget> target = {};  ///< a reference, once the name has been found
        QPointer<QObject> bound = {};   ///< what the component has been given
        bool found = false;             ///< there was a target
        bool told = false;              ///< what is wrong with it has been told
    };

    /// A property that a trigger sets, and how it was.
    struct Sibling {
        int index;
        QVariant value;
        bool changed;
    };

    void addFields(QObject* object, const QObject* pristine, QDesignerPropertySheetExtension* sheet,
                   const QString& path, const QString& group);
    const Field* field(int index) const;
    Field* field(int index);
    void writeText(Field& field, const QByteArray& text);
    void setTrigger(Field& trigger, const QVariant& value);
    void find(Field& field, const FormKeeper& keeper) const;
    bool bind(Field& field, QObject* target);
    void tell(Field& field, const QString& value, const QString& what);
    bool fits(const Field& field, QWidget* target) const;

    QDesignerFormEditorInterface* core_;
    QWidget* widget_;
    QDesignerPropertySheetExtension* base_;
    mutable std::vector<Field> fields_;
    QList<QList<Sibling>> pulled_;  ///< for each trigger that was pulled, how its siblings were before
};

}  // namespace zk
