#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkxyz/message.h>

#include <utility>

namespace zk {

Tattributes::Tattributes(QObject* parent)
    : TZkgraphicsobject(parent),
      polyStyle_(new TPolyAttributes(this)),
      material_(new Tmaterial(this)),
      texture_(new TTexture(this)) {}

Tattributes::~Tattributes() {
    release(polyStyle_);
    release(material_);
    release(texture_);
}

void Tattributes::release(QObject* object) {
    // An object that was given another parent since is that parent's.
    if (object && (!object->parent() || object->parent() == this))
        delete object;
}

void Tattributes::SetMaterial(Tmaterial* M) {
    if (!M || !material_)
        return;
    material_->SetMAterialKind(M->GetMAterialKind());
    ChangeD();
}

void Tattributes::setPolyStyle(TPolyAttributes* P) {
    if (!P || !polyStyle_)
        return;
    polyStyle_->SetMode(P->GetMode());
    ChangeD();
}

void Tattributes::SetTexture(TTexture* T) {
    if (!T || !texture_)
        return;
    texture_->SettextureKind(T->GettextureKind());
    ChangeD();
}

template <class T>
void Tattributes::replace(QPointer<T>& owned, T* object, Member member) {
    if (owned == object)
        return;
    if (object) {
        if (auto* other = qobject_cast<Tattributes*>(object->parent()))
            other->letGo(object);
        object->setParent(this);
    }
    QObject* old = owned;
    owned = object;
    hookAll(member, object);
    release(old);
}

void Tattributes::ReplaceMaterial(Tmaterial* M) {
    replace(material_, M, ofMaterial);
}
void Tattributes::ReplacePolyStyle(TPolyAttributes* P) {
    replace(polyStyle_, P, ofPolyStyle);
}
void Tattributes::ReplaceTexture(TTexture* T) {
    replace(texture_, T, ofTexture);
}

void Tattributes::letGo(QObject* object) {
    if (polyStyle_ == object) {
        polyStyle_ = nullptr;
        hookAll(ofPolyStyle, nullptr);
    } else if (material_ == object) {
        material_ = nullptr;
        hookAll(ofMaterial, nullptr);
    } else if (texture_ == object) {
        texture_ = nullptr;
        hookAll(ofTexture, nullptr);
    }
}

void Tattributes::AssignTo(QObject* Dest) {
    TZkgraphicsobject::AssignTo(Dest);
    MessageBeep();  // for the day on which the base takes the assignment
}

void Tattributes::connectHook(Hook& hook, Member member, TZkgraphicsobject* object) {
    QMetaObject::Connection& connection = hook.connections[member];
    disconnect(connection);
    connection = {};
    if (object && hook.receiver)
        connection = connect(object, &TZkgraphicsobject::OnChange, hook.receiver.data(), hook.handler);
}

void Tattributes::hookAll(Member member, TZkgraphicsobject* object) {
    for (Hook& hook : hooks_)
        connectHook(hook, member, object);
}

void Tattributes::HookChanges(QObject* receiver, TChangeHandler handler) {
    if (!receiver || !handler)
        return;
    std::erase_if(hooks_, [](const Hook& hook) { return hook.receiver.isNull(); });
    Hook& hook = hooks_.emplace_back(Hook{receiver, std::move(handler), {}});
    connectHook(hook, ofSet, this);
    connectHook(hook, ofPolyStyle, polyStyle_);
    connectHook(hook, ofMaterial, material_);
    connectHook(hook, ofTexture, texture_);
}

void Tattributes::UnhookChanges(QObject* receiver) {
    for (Hook& hook : hooks_) {
        if (hook.receiver == receiver)
            for (QMetaObject::Connection& connection : hook.connections)
                disconnect(connection);
    }
    std::erase_if(hooks_, [receiver](const Hook& hook) { return hook.receiver == receiver; });
}

}  // namespace zk
