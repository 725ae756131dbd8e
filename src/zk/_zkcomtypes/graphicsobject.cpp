#include "graphicsobject.h"

#include <QString>

namespace zk {

namespace {

QString className(const QObject* object) {
    if (!object)
        return QStringLiteral("nil");
    const QString qualified = QString::fromLatin1(object->metaObject()->className());
    return qualified.mid(qualified.lastIndexOf(QLatin1Char(':')) + 1);
}

}  // namespace

TZkgraphicsobject::TZkgraphicsobject(QObject* parent) : QObject(parent) {}

void TZkgraphicsobject::SetChanging(bool Value) {
    // Unsigned, so that a count that runs off one end comes back at the other.
    if (Value) {
        changeCount_ = std::int32_t(std::uint32_t(changeCount_) + 1U);
        changing_ = true;
    } else {
        changeCount_ = std::int32_t(std::uint32_t(changeCount_) - 1U);
    }
    if (changeCount_ < 1) {
        changing_ = false;
        ChangeD();
    }
}

void TZkgraphicsobject::ChangeD() {
    if (changeCount_ != 0)
        return;
    const Telling telling(*this);
    if (listener_)
        listener_->ObjectChanged(this);
    Q_EMIT OnChange(this);
}

void TZkgraphicsobject::Dispose(TZkgraphicsobject* object) {
    if (!object)
        return;
    if (!object->IsTelling()) {
        delete object;
        return;
    }
    object->SetChangeListener(nullptr);
    object->setParent(nullptr);
    object->deleteLater();
}

void TZkgraphicsobject::AssignTo(QObject* Dest) {
    throw EAssignError(
        QStringLiteral("Cannot assign a %1 to a %2").arg(className(this), className(Dest)).toStdString());
}

}  // namespace zk
