#pragma once

#include <zk/_zkxyz/errors.h>
#include <zk/host/formreading.h>

#include <QColor>
#include <QPointer>

#include <utility>

// Components that refer to each other, for tests of forms without any drawing.
namespace zk::test {

/// What is owned by a part.
class Inner : public QObject {
    Q_OBJECT
    Q_PROPERTY(QColor Color MEMBER Color)
    Q_PROPERTY(Kind Sort MEMBER Sort)
    Q_PROPERTY(Sides Edges READ edges WRITE setEdges)
    Q_PROPERTY(QString Text MEMBER Text)
    Q_PROPERTY(bool On MEMBER On)
    Q_PROPERTY(zk::test::Inner* Deeper MEMBER Deeper)
  public:
    enum Kind : std::uint8_t { First, Second, Third };
    Q_ENUM(Kind)
    enum Side { Left = 1, Right = 2, Top = 4 };
    Q_DECLARE_FLAGS(Sides, Side)
    Q_FLAG(Sides)

    using QObject::QObject;
    Sides edges() const { return Edges; }
    void setEdges(Sides edges) { Edges = edges; }

    QColor Color = Qt::black;
    Kind Sort = First;
    Sides Edges;
    QString Text;
    bool On = false;
    Inner* Deeper = nullptr;
};

class Part : public TComponent {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef Next READ readNext WRITE writeNext)
    Q_PROPERTY(zk::ComponentRef Panel READ readPanel WRITE writePanel)
    Q_PROPERTY(double Size MEMBER Size)
    Q_PROPERTY(int Count MEMBER Count)
    Q_PROPERTY(QString Place READ readPlace WRITE writePlace)
    Q_PROPERTY(zk::test::Inner* Owned READ readOwned CONSTANT)
  public:
    explicit Part(QObject* owner = nullptr, const QString& name = {});
    ~Part() override { AnnounceRemoval(); }

    /// Refuses itself.
    void SetNext(Part* next);
    void SetPlace(const QString& place);
    void Loaded() override;
    bool IsLoadedLast() const override { return LoadedLast; }

    double Size = 1;
    int Count = 1;
    QPointer<Part> Next;
    QPointer<QWidget> Panel;
    QString Place = QStringLiteral("here");
    Inner Owned;
    bool LoadedLast = false;
    int TimesLoaded = 0;
    static inline QStringList Order;  // what was set and loaded

  private:
    ComponentRef readNext() const { return ComponentRef(Next); }
    void writeNext(const ComponentRef& ref);
    ComponentRef readPanel() const;
    void writePanel(const ComponentRef& ref);
    QString readPlace() const { return Place; }
    void writePlace(const QString& place);
    Inner* readOwned() { return &Owned; }
};

/// A part that stands for a class derived from that of a reference.
class SpecialPart : public Part {
    Q_OBJECT
  public:
    using Part::Part;
};

}  // namespace zk::test
