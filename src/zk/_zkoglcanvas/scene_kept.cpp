#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/oglmaterial.h>
#include <zk/_zkoglcanvas/ogltexture.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/sceneplan.h>
#include <zk/_zkoglcanvas/textureobjects.h>

#include <QMetaMethod>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>

namespace zk {

namespace {

/// Passes the attributes of shapes on to the list that is being compiled, as far as they differ from those before.
class AttributeStream {
  public:
    explicit AttributeStream(TextureObjects& textures) : textures_(textures) {}

    void Pass(const KeptDrawing::Style& style) {
        if (!begun_ || style.Face.Mode != mode_)
            _GlPolyGonMode(0, int(style.Face.Mode));
        mode_ = style.Face.Mode;
        if (!begun_ || style.Texture != texture_)
            TOglTexture::Pass(textures_, style.Texture);
        texture_ = style.Texture;
        TOglMaterial::Pass(style.Material, begun_ ? &material_ : nullptr);
        material_ = style.Material;
        begun_ = true;
    }

  private:
    TextureObjects& textures_;
    bool begun_ = false;
    unsigned mode_ = 0;
    Tmaterialkind material_;
    TTextureKind texture_;
};

}  // namespace

// --- planning -------------------------------------------------------------------------------------------------------

// Draws anew what has changed. OpenGL compiles one list at a time, so that this comes before the scene's list is begun.
// No user code runs in it.
void TZKOglScene::plan() {
    // Uploading binds textures: what is in force comes back.
    glPushAttrib(GL_TEXTURE_BIT);
    lookAtShapes();
    glPopAttrib();
    regroup();
    planIsCurrent_ = true;
}

// A shape may be listed here and belong elsewhere, or nowhere: where it belongs is where it draws.
bool TZKOglScene::drawsHere(const TZkShape& shape) const {
    if (shape.GetDisplayList() == this)
        return true;
    const auto* home = qobject_cast<TZKOglScene*>(shape.GetDisplayList());
    return home && home->canvas_ == canvas_;
}

// Which shapes are kept, and how they are drawn.
void TZKOglScene::lookAtShapes() {
    KeptDrawing::Style inForce;
    inForce.Shown = true;
    inForce.Face = canvas_->GetFaceStyle();
    inForce.Face.Mode = attributes_->getPolyStyle()->GLMode();
    // A material of another face than the front does not paint over what the one before it has left on the front.
    const bool frontOnly = attributes_->getMaterial()->GetFace() == glfront;
    // User code may leave other attributes in force than it has found.
    bool isKnown = !isSignalConnected(QMetaMethod::fromSignal(&TDisplayList::OnPlay));
    bool placesAreKnown = true;
    TXYZ moved = Nullxyz;
    TTextureKind texture;
    texture.Visible = false;

    plan_.assign(std::size_t(GetShapeCount()), Planned());
    for (std::size_t i = 0; i < plan_.size(); ++i) {
        Planned& entry = plan_[i];
        TZkShape* shape = Entry(i);
        entry.shape = shape;
        entry.movedBefore = entry.movedAfter = moved;
        auto* kept = dynamic_cast<KeptShape*>(shape);
        if (!kept || !frontOnly || !drawsHere(*shape)) {
            isKnown = false;
            placesAreKnown = false;
            continue;
        }
        KeptDrawing::Style style = inForce;
        style.Shown = kept->IsShown();
        if (style.Shown) {
            TXYZ remainder = Nullxyz;
            placesAreKnown = placesAreKnown && kept->Remainder(remainder);
            moved = Add(moved, remainder);
            entry.movedAfter = moved;
            if (!kept->CanBeKept()) {
                isKnown = false;
                continue;
            }
            if (const Tattributes* own = kept->KeptAttributes()) {
                style.OwnMaterial = true;
                style.Material = own->getMaterial()->GetMAterialKind();
                style.Face.Mode = inForce.Face.Mode = own->getPolyStyle()->GLMode();
                if (own->getTexture()->GetVisible())
                    style.Texture = texture = pictureOf(*own->getTexture(), texture);
                else
                    style.Texture.Visible = false;
                style.Face.Textured = style.Texture.Visible;
                style.Face.TextureBase = style.Texture.Base;
            } else if (!isKnown) {
                continue;
            }
        }
        entry.kept = kept;
        entry.userCode = false;
        entry.reach = placesAreKnown ? Planned::Reach::box : Planned::Reach::unknown;
        if (kept->Kept().Last != style) {
            kept->Kept().Last = style;
            ++kept->Kept().Version;
        }
    }
}

// A texture as it comes out when it is passed to the canvas. Its picture goes to OpenGL, which no list may hold.
// `before`: that of the last shape, which many shapes share.
TTextureKind TZKOglScene::pictureOf(const TTexture& texture, const TTextureKind& before) {
    TTextureKind kind = texture.GettextureKind();
    auto* inForce = qobject_cast<TOglTexture*>(canvas_->getAttributes()->getTexture());
    kind.Visible = kind.Visible && inForce && !kind.Picture.isEmpty();
    if (!kind.Visible)
        return kind;
    if (before.Visible && before.Picture == kind.Picture) {
        kind.Pixels = before.Pixels;
        kind.Width = before.Width;
        kind.Height = before.Height;
        return kind;
    }
    const PTextureItem item = inForce->FindPicture(kind.Picture);
    kind.Visible = item && item->Pixels;
    if (!kind.Visible)
        return kind;
    kind.Pixels = item->Pixels;
    kind.Width = item->Width;
    kind.Height = item->Height;
    canvas_->Textures()->Upload(kind.Pixels, kind.Width, kind.Height);
    return kind;
}

bool TZKOglScene::Group::EndsBefore(std::int32_t oldOfLast, std::int32_t oldOfNext) const {
    if (vertices >= 2 * fullVertices)
        return true;
    if (oldOfNext < 0)
        return vertices >= fullVertices;
    return oldOfNext != oldOfLast && vertices >= fewVertices;
}

// Puts the kept shapes into groups: into the old ones where nothing has changed.
void TZKOglScene::regroup() {
    std::vector<Group> old;
    old.swap(groups_);
    const auto deleteRest = qScopeGuard([&old] {
        for (const Group& group : old)
            if (group.list != 0)
                glDeleteLists(group.list, 1);
    });
    groups_.reserve(old.size() + 8);
    for (std::size_t i = 0; i < plan_.size();) {
        if (!plan_[i].kept) {
            ++i;
            continue;
        }
        const std::int32_t before = plan_[i].kept->Kept().Group;
        if (before >= 0 && std::size_t(before) < old.size() && canStay(old[std::size_t(before)], i)) {
            groups_.push_back(std::move(old[std::size_t(before)]));
            old[std::size_t(before)].list = 0;
            groups_.back().first = i;
            i += groups_.back().members.size();
        } else {
            i = newGroup(i);
        }
    }
    for (std::size_t g = 0; g < groups_.size(); ++g)
        for (std::size_t i = 0; i < groups_[g].members.size(); ++i)
            plan_[groups_[g].first + i].kept->Kept().Group = plan_[groups_[g].first + i].group = std::int32_t(g);

    for (Planned& entry : plan_) {
        if (entry.reach != Planned::Reach::box)
            continue;
        const Bounds& box = entry.kept->Kept().Box;
        if (box.IsEmpty() || !entry.kept->IsShown()) {
            entry.reach = Planned::Reach::nothing;
            continue;
        }
        entry.center = Add(Mul(Add(box.Low, box.High), 0.5), entry.movedBefore);
        entry.half = Mul(Sub(box.High, box.Low), 0.5);
    }
}

bool TZKOglScene::canStay(const Group& group, std::size_t first) const {
    if (group.list == 0 || first + group.members.size() > plan_.size())
        return false;
    const std::size_t end = first + group.members.size();
    if (group.vertices < Group::fewVertices && end < plan_.size() && plan_[end].kept)
        return false;
    for (std::size_t i = 0; i < group.members.size(); ++i) {
        const Planned& entry = plan_[first + i];
        if (entry.shape != group.members[i].shape || !entry.kept ||
            entry.kept->Kept().Version != group.members[i].version)
            return false;
    }
    return true;
}

// Draws a group that begins with an entry. Gives the entry behind it.
std::size_t TZKOglScene::newGroup(std::size_t first) {
    Group group;
    group.first = first;
    group.list = glGenLists(1);
    if (group.list == 0) {
        plan_[first].kept = nullptr;
        plan_[first].reach = Planned::Reach::unknown;
        return first + 1;
    }
    auto abandon = qScopeGuard([&group] {
        glEndList();
        glDeleteLists(group.list, 1);
    });
    glNewList(group.list, GL_COMPILE);
    AttributeStream attributes(*canvas_->Textures());
    std::size_t i = first;
    for (; i < plan_.size() && plan_[i].kept; ++i) {
        KeptDrawing& drawing = plan_[i].kept->Kept();
        const KeptDrawing::Style& style = drawing.Last;
        if (i != first && group.EndsBefore(plan_[i - 1].kept->Kept().Group, drawing.Group))
            break;
        if (style.Shown) {
            if (!group.drawsNothing && style.OwnMaterial != group.ownAttributes)
                break;
            group.ownAttributes = style.OwnMaterial;
            group.drawsNothing = false;
            if (style.OwnMaterial)
                attributes.Pass(style);
            const Drawn drawn = plan_[i].kept->DrawKept(style.Face);
            drawing.Box = drawn.Box;
            group.vertices += drawn.Vertices;
        }
        ++group.vertices;  // that groups stay small, whatever is in them
        group.members.push_back({plan_[i].shape, drawing.Version});
    }
    abandon.dismiss();
    glEndList();
    groups_.push_back(std::move(group));
    return i;
}

// --- playing --------------------------------------------------------------------------------------------------------

// What groups leave in force is not what a shape without attributes of its own, or user code, may find.
void TZKOglScene::bringBackAttributes() {
    if (attributesChanged_ && canvas_)
        canvas_->SetAttributeskind(inForce_);
    attributesChanged_ = false;
}

// Draws the group that begins with an entry, if one does and is still what it was planned to be.
bool TZKOglScene::playGroup(std::size_t index) {
    if (index >= plan_.size() || plan_[index].group < 0)
        return false;
    const Group& group = groups_[std::size_t(plan_[index].group)];
    if (group.first != index)
        return false;
    if (userCodeRan_) {
        if (!group.ownAttributes)
            return false;
        for (std::size_t i = 0; i < group.members.size(); ++i) {
            if (Entry(index + i) != group.members[i].shape)
                return false;  // it has gone, and so has what the plan has of it
            const KeptShape& shape = *plan_[index + i].kept;
            FaceStyle faces = shape.Kept().Last.Face;
            faces.Mode = faces_.Mode;
            faces.Textured = faces_.Textured;
            faces.TextureBase = faces_.TextureBase;
            if (shape.Kept().Version != group.members[i].version || shape.IsShown() != shape.Kept().Last.Shown ||
                (shape.IsShown() && (!shape.CanBeKept() || !shape.KeptAttributes())) || faces != faces_)
                return false;
        }
    }
    if (!group.drawsNothing) {
        if (!group.ownAttributes)
            bringBackAttributes();
        glCallList(group.list);
        attributesChanged_ = attributesChanged_ || group.ownAttributes;
    }
    playedUntil_ = index + group.members.size();
    return true;
}

void TZKOglScene::PlayShape(std::size_t index, TZkShape& shape) {
    if (pick_) {
        pickShape(index, shape);
        return;
    }
    if (!compiling_) {
        shape.Play();
        return;
    }
    if (!canvas_ || playGroup(index))
        return;  // a handler may have taken the scene away from its canvas
    bringBackAttributes();
    userCodeRan_ = true;
    const QPointer<TZKOglScene> self = this;
    shape.Play();
    if (self && canvas_ && canvas_->CheckCurrent())
        faces_ = canvas_->GetFaceStyle();
}

// The first call comes after the scene's own `OnPlay`.
std::size_t TZKOglScene::NextToPlay(std::size_t index, std::size_t count) {
    if (!canvas_ || !canvas_->CheckCurrent())
        return index;
    if (!pick_) {
        if (compiling_ && index == 0) {
            faces_ = canvas_->GetFaceStyle();
            inForce_ = canvas_->getAttributeskind();
            attributesChanged_ = false;
            playedUntil_ = 0;
            userCodeRan_ = isSignalConnected(QMetaMethod::fromSignal(&TDisplayList::OnPlay));
        }
        return compiling_ ? std::max(index, playedUntil_) : index;
    }
    if (index == 0) {
        pick_->Take(canvas_->GetOglModelMatrix());
        pick_->culling = planIsCurrent_ && plan_.size() == count;
    }
    if (!pick_->culling)
        return index;
    for (; index < count; ++index) {
        const Planned& entry = plan_[index];
        if (entry.shape != Entry(index)) {
            pick_->culling = false;
            break;
        }
        if (entry.reach == Planned::Reach::unknown ||
            (entry.reach == Planned::Reach::box && pick_->Meets(entry.center, entry.half)))
            break;
    }
    if (index < count) {
        // The shapes that were left out would have moved this one.
        const TXYZ missing = Sub(plan_[index].movedBefore, pick_->moved);
        if (!(missing == Nullxyz))
            canvas_->OGLTranslate(missing);
        pick_->moved = plan_[index].movedBefore;
    }
    return index;
}

// --- picking --------------------------------------------------------------------------------------------------------

void TZKOglScene::pickShape(std::size_t index, TZkShape& shape) {
    const QPointer<TZKOglScene> self = this;
    const bool watched = pick_->culling && plan_[index].userCode;
    const Tmatrix before = watched ? canvas_->GetOglModelMatrix() : Identity;
    shape.Play();
    if (!self || !pick_ || !pick_->culling || !canvas_ || !canvas_->CheckCurrent())
        return;
    if (index >= plan_.size()) {
        pick_->culling = false;
        return;
    }
    const TXYZ by = Sub(plan_[index].movedAfter, plan_[index].movedBefore);
    pick_->moved = plan_[index].movedAfter;
    if (!watched)
        return;
    // User code that leaves the matrix changed moves all that follows: the plan does not know where to.
    const Tmatrix expected = Mulmat(TranslationToMatrix3d(by), before);
    const Tmatrix after = canvas_->GetOglModelMatrix();
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column) {
            const double tolerance = 1e-4 * std::max(1.0, std::fabs(expected[row][column]));
            if (!(std::fabs(after[row][column] - expected[row][column]) <= tolerance))
                pick_->culling = false;
        }
}

void TZKOglScene::PickVolume::Take(const Tmatrix& modelView) {
    count = 0;
    for (GLenum i = 0; i < planes.size(); ++i) {
        if (!glIsEnabled(GL_CLIP_PLANE0 + i))
            continue;
        GLdouble eye[4] = {0, 0, 0, 0};
        glGetClipPlane(GL_CLIP_PLANE0 + i, eye);
        std::array<double, 4> scene{};
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t column = 0; column < 4; ++column)
                scene[row] += modelView[row][column] * eye[column];
        planes[count++] = {{scene[0], scene[1], scene[2]}, scene[3]};
    }
}

bool TZKOglScene::PickVolume::Meets(const TXYZ& center, const TXYZ& half) const {
    for (std::size_t i = 0; i < count; ++i) {
        const Plane& plane = planes[i];
        const double nx = std::fabs(plane.normal.x);
        const double ny = std::fabs(plane.normal.y);
        const double nz = std::fabs(plane.normal.z);
        const double reach = nx * half.x + ny * half.y + nz * half.z;
        const double distance = Skal(plane.normal, center) + plane.distance;
        // OpenGL computes with seven digits; what it might still find must not be left out.
        const double size = nx * std::fabs(center.x) + ny * std::fabs(center.y) + nz * std::fabs(center.z) + reach +
                            std::fabs(plane.distance);
        if (distance + reach < -1e-5 * size)
            return false;
    }
    return true;
}

}  // namespace zk
