#include "support.h"

#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkxyz/message.h>

#include <QPointer>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace zk;

TEST(Attributes, ANewSetHoldsFreshObjectsOfTheBaseClasses) {
    const Tattributes set;
    ASSERT_NE(nullptr, set.getPolyStyle());
    ASSERT_NE(nullptr, set.getMaterial());
    ASSERT_NE(nullptr, set.getTexture());
    EXPECT_EQ(&TPolyAttributes::staticMetaObject, set.getPolyStyle()->metaObject());
    EXPECT_EQ(&Tmaterial::staticMetaObject, set.getMaterial()->metaObject());
    EXPECT_EQ(&TTexture::staticMetaObject, set.getTexture()->metaObject());
    EXPECT_EQ(glfill, set.getPolyStyle()->GetMode());
    EXPECT_EQ(Tmaterial().GetMAterialKind(), set.getMaterial()->GetMAterialKind());
    EXPECT_EQ(TTexture().GettextureKind(), set.getTexture()->GettextureKind());
}

TEST(Attributes, TheOwnedObjectsGoWithTheSet) {
    auto set = std::make_unique<Tattributes>();
    const QPointer<QObject> owned[] = {set->getPolyStyle(), set->getMaterial(), set->getTexture()};
    set.reset();
    for (const QPointer<QObject>& object : owned)
        EXPECT_TRUE(object.isNull());
}

TEST(Attributes, SettingAMaterialCopiesItsValues) {
    Tattributes set;
    Tmaterial* const own = set.getMaterial();
    Tmaterial source;
    source.SetMAterialKind(maEisen);
    Changes changes(set);
    Changes inner(*own);
    set.SetMaterial(&source);
    EXPECT_EQ(own, set.getMaterial());
    EXPECT_EQ(maEisen, own->GetMAterialKind());
    EXPECT_EQ(1, changes.take());
    EXPECT_EQ(8, inner.take());
    source.SetEmission(0);
    EXPECT_EQ(0xFF00FFU, own->GetEmission());
}

TEST(Attributes, SettingAPolyStyleCopiesTheModeAlone) {
    Tattributes set;
    TPolyAttributes source;
    source.SetMode(glline);
    source.SetStyle(gllines);
    Changes changes(set);
    Changes inner(*set.getPolyStyle());
    set.setPolyStyle(&source);
    EXPECT_EQ(glline, set.getPolyStyle()->GetMode());
    EXPECT_EQ(glpolygon, set.getPolyStyle()->GetStyle());
    EXPECT_EQ(1, changes.take());
    EXPECT_EQ(1, inner.take());
}

TEST(Attributes, SettingATextureCopiesItsDescription) {
    Tattributes set;
    TTexture source;
    source.SetPicture(QStringLiteral("wall.bmp"));
    source.SetFilter(gllinear);
    source.SetVisible(true);
    Changes changes(set);
    Changes inner(*set.getTexture());
    set.SetTexture(&source);
    EXPECT_EQ(source.GettextureKind(), set.getTexture()->GettextureKind());
    EXPECT_EQ(1, changes.take());
    EXPECT_EQ(1, inner.take());
}

TEST(Attributes, SettingNothingChangesNothing) {
    Tattributes set;
    Changes changes(set);
    set.SetMaterial(nullptr);
    set.setPolyStyle(nullptr);
    set.SetTexture(nullptr);
    EXPECT_EQ(0, changes.take());
}

TEST(Attributes, SettingTheOwnObjectsIsHarmless) {
    Tattributes set;
    set.getMaterial()->SetMAterialKind(maNavy);
    set.getTexture()->SetPicture(QStringLiteral("wall.bmp"));
    set.SetMaterial(set.getMaterial());
    set.setPolyStyle(set.getPolyStyle());
    set.SetTexture(set.getTexture());
    EXPECT_EQ(maNavy, set.getMaterial()->GetMAterialKind());
    EXPECT_EQ(QStringLiteral("wall.bmp"), set.getTexture()->GetPicture());
}

TEST(Attributes, ReplacingFreesTheOldAndOwnsTheNew) {
    auto set = std::make_unique<Tattributes>();
    const QPointer<QObject> old[] = {set->getPolyStyle(), set->getMaterial(), set->getTexture()};
    const QPointer<TPolyAttributes> polyStyle = new TPolyAttributes;
    const QPointer<Tmaterial> material = new Tmaterial;
    const QPointer<TTexture> texture = new TTexture;
    Changes changes(*set);
    set->ReplacePolyStyle(polyStyle);
    set->ReplaceMaterial(material);
    set->ReplaceTexture(texture);
    EXPECT_EQ(0, changes.take());
    for (const QPointer<QObject>& object : old)
        EXPECT_TRUE(object.isNull());
    EXPECT_EQ(polyStyle.data(), set->getPolyStyle());
    EXPECT_EQ(material.data(), set->getMaterial());
    EXPECT_EQ(texture.data(), set->getTexture());
    set.reset();
    EXPECT_TRUE(polyStyle.isNull());
    EXPECT_TRUE(material.isNull());
    EXPECT_TRUE(texture.isNull());
}

TEST(Attributes, ReplacingByTheOwnedObjectChangesNothing) {
    Tattributes set;
    const QPointer<Tmaterial> material = set.getMaterial();
    set.ReplaceMaterial(material);
    set.ReplacePolyStyle(set.getPolyStyle());
    set.ReplaceTexture(set.getTexture());
    EXPECT_FALSE(material.isNull());
    EXPECT_EQ(material.data(), set.getMaterial());
}

TEST(Attributes, ReplacingByNothingLeavesNone) {
    Tattributes set;
    const QPointer<Tmaterial> material = set.getMaterial();
    set.ReplaceMaterial(nullptr);
    set.ReplacePolyStyle(nullptr);
    set.ReplaceTexture(nullptr);
    EXPECT_TRUE(material.isNull());
    EXPECT_EQ(nullptr, set.getMaterial());
    EXPECT_EQ(nullptr, set.getPolyStyle());
    EXPECT_EQ(nullptr, set.getTexture());

    Changes changes(set);
    Tattributes source;
    set.SetMaterial(source.getMaterial());
    set.setPolyStyle(source.getPolyStyle());
    set.SetTexture(source.getTexture());
    EXPECT_EQ(0, changes.take());
    set.ReplaceMaterial(new Tmaterial);
    EXPECT_NE(nullptr, set.getMaterial());
}

TEST(Attributes, AnObjectDeletedFromOutsideReadsAsNone) {
    auto set = std::make_unique<Tattributes>();
    delete set->getMaterial();
    delete set->getTexture();
    delete set->getPolyStyle();
    EXPECT_EQ(nullptr, set->getMaterial());
    EXPECT_EQ(nullptr, set->getTexture());
    EXPECT_EQ(nullptr, set->getPolyStyle());
    Tmaterial source;
    set->SetMaterial(&source);
    set->ReplaceMaterial(new Tmaterial);
    EXPECT_NE(nullptr, set->getMaterial());
}

TEST(Attributes, AnObjectOfAnotherSetMovesOver) {
    int events = 0;
    QObject receiver;
    auto one = std::make_unique<Tattributes>();
    auto two = std::make_unique<Tattributes>();
    one->HookChanges(&receiver, [&events](QObject*) { ++events; });
    const QPointer<Tmaterial> material = one->getMaterial();
    two->ReplaceMaterial(material);
    EXPECT_EQ(nullptr, one->getMaterial());
    EXPECT_EQ(material.data(), two->getMaterial());
    material->SetAmbient(1);
    EXPECT_EQ(0, events);  // it is no longer the first one's business
    one.reset();
    EXPECT_FALSE(material.isNull());
    two.reset();
    EXPECT_TRUE(material.isNull());
}

TEST(Attributes, ObjectsOfEveryKindMoveOverFromASetThatListened) {
    std::vector<QObject*> heard;
    QObject receiver;
    Tattributes one;
    Tattributes two;
    TPolyAttributes* const polyStyle = one.getPolyStyle();
    TTexture* const texture = one.getTexture();
    two.ReplacePolyStyle(polyStyle);
    two.ReplaceTexture(texture);
    EXPECT_EQ(nullptr, one.getPolyStyle());
    EXPECT_EQ(nullptr, one.getTexture());
    EXPECT_NE(nullptr, one.getMaterial());
    EXPECT_EQ(polyStyle, two.getPolyStyle());
    EXPECT_EQ(texture, two.getTexture());
    two.HookChanges(&receiver, [&heard](QObject* sender) { heard.push_back(sender); });
    polyStyle->SetMode(glline);
    texture->SetVisible(true);
    EXPECT_EQ((std::vector<QObject*>{polyStyle, texture}), heard);
}

TEST(Attributes, AnObjectThatWasGivenToSomeoneElseIsTheirs) {
    QObject someone;
    auto set = std::make_unique<Tattributes>();
    const QPointer<Tmaterial> material = set->getMaterial();
    const QPointer<TTexture> texture = set->getTexture();
    material->setParent(&someone);
    texture->setParent(nullptr);
    set.reset();
    EXPECT_FALSE(material.isNull());
    EXPECT_TRUE(texture.isNull());  // nobody's is still the set's
}

TEST(Attributes, AssigningIsAnErrorAndNeverBeeps) {
    int beeps = 0;
    const BeepHandler before = SetBeepHandler([&beeps] { ++beeps; });
    Tattributes set;
    Tattributes other;
    try {
        set.AssignTo(&other);
        ADD_FAILURE();
    } catch (const EAssignError& error) {
        EXPECT_STREQ("Cannot assign a Tattributes to a Tattributes", error.what());
    }
    EXPECT_THROW(set.AssignTo(nullptr), EAssignError);
    EXPECT_THROW(set.AssignTo(&set), EAssignError);
    EXPECT_EQ(0, beeps);
    SetBeepHandler(before);
}

namespace {

class Hooks : public testing::Test {
  protected:
    Tattributes::TChangeHandler note() {
        return [this](QObject* sender) { senders.push_back(sender); };
    }
    std::size_t take() { return std::exchange(senders, {}).size(); }

    QObject receiver;
    std::vector<QObject*> senders;
    Tattributes set;
};

}  // namespace

TEST_F(Hooks, HearTheSetAndItsMembers) {
    set.HookChanges(&receiver, note());
    set.ChangeD();
    set.getPolyStyle()->ChangeD();
    set.getMaterial()->ChangeD();
    set.getTexture()->ChangeD();
    EXPECT_EQ((std::vector<QObject*>{&set, set.getPolyStyle(), set.getMaterial(), set.getTexture()}), senders);
}

TEST_F(Hooks, MoveOverToWhatReplacesAMember) {
    set.HookChanges(&receiver, note());
    auto* material = new Tmaterial;
    set.ReplaceMaterial(material);
    EXPECT_EQ(0U, take());
    material->SetAmbient(1);
    EXPECT_EQ((std::vector<QObject*>{material}), senders);
    take();

    set.ReplacePolyStyle(new TPolyAttributes);
    set.ReplaceTexture(new TTexture);
    set.getPolyStyle()->SetMode(glline);
    set.getTexture()->SetVisible(true);
    EXPECT_EQ(2U, take());

    set.ReplaceMaterial(nullptr);
    set.ReplaceMaterial(new Tmaterial);
    set.getMaterial()->SetAmbient(1);
    EXPECT_EQ(1U, take());
}

TEST_F(Hooks, AreNotDoubledByTheOwnedObjectAgain) {
    set.HookChanges(&receiver, note());
    set.ReplaceMaterial(set.getMaterial());
    set.getMaterial()->SetAmbient(1);
    EXPECT_EQ(1U, take());
}

TEST_F(Hooks, EachCallAddsOne) {
    set.HookChanges(&receiver, note());
    set.HookChanges(&receiver, note());
    set.getMaterial()->SetAmbient(1);
    EXPECT_EQ(2U, take());
}

TEST_F(Hooks, EndWithTheReceiver) {
    auto temporary = std::make_unique<QObject>();
    set.HookChanges(temporary.get(), note());
    temporary.reset();
    set.getMaterial()->SetAmbient(1);
    set.ReplaceMaterial(new Tmaterial);
    set.getMaterial()->SetAmbient(1);
    set.HookChanges(&receiver, note());
    set.ChangeD();
    EXPECT_EQ(1U, take());
}

TEST_F(Hooks, CanBeTakenBack) {
    QObject other;
    set.HookChanges(&receiver, note());
    set.HookChanges(&receiver, note());
    set.HookChanges(&other, note());
    set.UnhookChanges(&receiver);
    set.getTexture()->SetVisible(true);
    EXPECT_EQ(1U, take());
    set.UnhookChanges(&other);
    set.UnhookChanges(&other);
    set.UnhookChanges(nullptr);
    set.getTexture()->SetVisible(true);
    EXPECT_EQ(0U, take());
}

TEST_F(Hooks, RubbishIsIgnored) {
    set.HookChanges(nullptr, note());
    set.HookChanges(&receiver, nullptr);
    set.ChangeD();
    EXPECT_EQ(0U, take());
}

TEST_F(Hooks, AHandlerMayHookAndUnhook) {
    set.HookChanges(&receiver, [this](QObject*) {
        set.UnhookChanges(&receiver);
        for (int i = 0; i < 20; ++i)
            set.HookChanges(&receiver, note());
    });
    set.ChangeD();
    take();
    set.ChangeD();
    EXPECT_EQ(20U, take());
}

TEST_F(Hooks, AHandlerMayReplaceAnotherMember) {
    set.HookChanges(&receiver, [this](QObject* sender) {
        if (sender == set.getMaterial())
            set.ReplaceTexture(new TTexture);
    });
    set.getMaterial()->SetAmbient(1);
    EXPECT_NE(nullptr, set.getTexture());
}

TEST(Attributes, PublishedProperties) {
    EXPECT_EQ((Published{
                  {"PolyStyle", "zk::TPolyAttributes*"}, {"Material", "zk::Tmaterial*"}, {"Texture", "zk::TTexture*"}}),
              published(Tattributes::staticMetaObject));
}

TEST(Attributes, OwnedObjectsAreReadAsObjects) {
    const Tattributes set;
    EXPECT_EQ(set.getPolyStyle(), set.property("PolyStyle").value<QObject*>());
    EXPECT_EQ(set.getMaterial(), set.property("Material").value<QObject*>());
    EXPECT_EQ(set.getTexture(), set.property("Texture").value<QObject*>());
    EXPECT_EQ(set.getMaterial(), set.property("Material").value<Tmaterial*>());
}

TEST(Attributes, WritingAnObjectPropertyCopiesValues) {
    Tattributes set;
    Tmaterial* const own = set.getMaterial();
    Tmaterial source;
    source.SetMAterialKind(maRed);
    EXPECT_TRUE(set.setProperty("Material", QVariant::fromValue(&source)));
    EXPECT_EQ(own, set.getMaterial());
    EXPECT_EQ(maRed, own->GetMAterialKind());

    source.SetMAterialKind(maAqua);
    EXPECT_TRUE(set.setProperty("Material", QVariant::fromValue<QObject*>(&source)));
    EXPECT_EQ(maAqua, own->GetMAterialKind());

    TPolyAttributes polyStyle;
    polyStyle.SetMode(glpoint);
    EXPECT_TRUE(set.setProperty("PolyStyle", QVariant::fromValue(&polyStyle)));
    EXPECT_EQ(glpoint, set.getPolyStyle()->GetMode());

    TTexture texture;
    texture.SetWorldWidth(9);
    EXPECT_TRUE(set.setProperty("Texture", QVariant::fromValue(&texture)));
    EXPECT_EQ(9, set.getTexture()->getWorldwidth());
}

TEST(Attributes, WritingAnObjectOfAnotherClassChangesNothing) {
    Tattributes set;
    set.getMaterial()->SetMAterialKind(maRed);
    TTexture texture;
    set.setProperty("Material", QVariant::fromValue<QObject*>(&texture));
    EXPECT_EQ(maRed, set.getMaterial()->GetMAterialKind());
    set.setProperty("Material", QVariant::fromValue<QObject*>(nullptr));
    EXPECT_EQ(maRed, set.getMaterial()->GetMAterialKind());
}
