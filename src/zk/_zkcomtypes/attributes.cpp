#include "attributes.h"

#include <zk/_zkxyz/message.h>

#include <utility>

namespace zk {

Tattributes::Tattributes(QObject* parent)
    : TZkgraphicsobject(parent),
      polyStyle_(new TPolyAttributes(this)),
      material_(new Tmaterial(this)),
      texture_(new TTexture(this)) {
    SetChangeListener(this);
    polyStyle_->SetChangeListener(this);
    material_->SetChangeListener(this);
    texture_->SetChangeListener(this);
}

Tattributes::~Tattributes() {
    release(polyStyle_);
    release(material_);
    release(texture_);
}

void Tattributes::release(TZkgraphicsobject* object) {
    if (object)
        object->SetChangeListener(nullptr);
    // An object that was given another parent since is that parent's.
    if (object && (!object->parent() || object->parent() == this))
        Dispose(object);
}

void Tattributes::SetMaterial(Tmaterial* M) {
    if (!M || !material_)
        return;
    const Telling telling(*this);
    material_->SetMAterialKind(M->GetMAterialKind());
    ChangeD();
}

void Tattributes::setPolyStyle(TPolyAttributes* P) {
    if (!P || !polyStyle_)
        return;
    const Telling telling(*this);
    polyStyle_->SetMode(P->GetMode());
    ChangeD();
}

void Tattributes::SetTexture(TTexture* T) {
    if (!T || !texture_)
        return;
    const Telling telling(*this);
    texture_->SettextureKind(T->GettextureKind());
    ChangeD();
}

template <class T>
void Tattributes::replace(QPointer<T>& owned, T* object) {
    if (owned == object)
        return;
    if (object) {
        if (auto* other = qobject_cast<Tattributes*>(object->parent()))
            other->letGo(object);
        object->setParent(this);
        object->SetChangeListener(this);
    }
    TZkgraphicsobject* old = owned;
    owned = object;
    release(old);
}

void Tattributes::ReplaceMaterial(Tmaterial* M) {
    replace(material_, M);
}
void Tattributes::ReplacePolyStyle(TPolyAttributes* P) {
    replace(polyStyle_, P);
}
void Tattributes::ReplaceTexture(TTexture* T) {
    replace(texture_, T);
}

// The object belongs to another set from now on, which listens to it.
void Tattributes::letGo(QObject* object) {
    if (polyStyle_ == object)
        polyStyle_ = nullptr;
    else if (material_ == object)
        material_ = nullptr;
    else if (texture_ == object)
        texture_ = nullptr;
}

void Tattributes::AssignTo(QObject* Dest) {
    TZkgraphicsobject::AssignTo(Dest);
    MessageBeep();  // for the day on which the base takes the assignment
}

// A handler may add and remove hooks, or delete the receiver or, where the set itself has not changed, the set.
void Tattributes::ObjectChanged(TZkgraphicsobject* object) {
    const QPointer<Tattributes> self = this;
    for (std::size_t i = 0; self && i < hooks_.size(); ++i) {
        const Hook hook = hooks_[i];
        if (hook.receiver)
            hook.handler(object);
    }
}

void Tattributes::HookChanges(QObject* receiver, TChangeHandler handler) {
    if (!receiver || !handler)
        return;
    std::erase_if(hooks_, [](const Hook& hook) { return hook.receiver.isNull(); });
    hooks_.push_back({receiver, std::move(handler)});
}

void Tattributes::UnhookChanges(QObject* receiver) {
    std::erase_if(hooks_, [receiver](const Hook& hook) { return hook.receiver == receiver; });
}

}  // namespace zk
