#include <zk/_zkcomtypes/lights.h>
#include <zk/_zkxyz/errors.h>

#include <QPointer>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace zk;

namespace {

class Named : public Tlight {
  public:
    Named(char name, std::string& deaths, QObject* owner = nullptr) : Tlight(owner), name_(name), deaths_(deaths) {}
    ~Named() override { deaths_ += name_; }

  private:
    char name_;
    std::string& deaths_;
};

}  // namespace

TEST(Lights, ANewListIsEmptyAndKnowsItsClass) {
    const TLights lights;
    EXPECT_EQ(0, lights.Count());
    EXPECT_EQ(QStringLiteral("Tlight"), lights.LightClass().name);
    const TLights others(TLightClass{QStringLiteral("Other"), nullptr});
    EXPECT_EQ(QStringLiteral("Other"), others.LightClass().name);
}

TEST(Lights, AreKeptInOrder) {
    TLights lights;
    auto* one = new Tlight;
    auto* two = new Tlight;
    EXPECT_EQ(0, lights.Add(one));
    EXPECT_EQ(1, lights.Add(two));
    EXPECT_EQ(2, lights.Count());
    EXPECT_EQ(one, lights.getLights(0));
    EXPECT_EQ(two, lights.getLights(1));
    EXPECT_EQ(0, lights.IndexOf(one));
    EXPECT_EQ(1, lights.IndexOf(two));
}

TEST(Lights, ABadIndexIsAnError) {
    TLights lights;
    EXPECT_THROW(lights.getLights(0), EListError);
    EXPECT_THROW(lights.Delete(0), EListError);
    lights.Add(new Tlight);
    EXPECT_THROW(lights.getLights(-1), EListError);
    EXPECT_THROW(lights.getLights(1), EListError);
    EXPECT_THROW(lights.Delete(-1), EListError);
    EXPECT_THROW(lights.Delete(1), EListError);
    try {
        lights.getLights(7);
        FAIL();
    } catch (const EListError& error) {
        EXPECT_STREQ("List index out of bounds (7)", error.what());
    }
}

TEST(Lights, TheListDeletesItsLightsLastOneFirst) {
    std::string deaths;
    {
        TLights lights;
        for (const char name : {'a', 'b', 'c'})
            lights.Add(new Named(name, deaths));
    }
    EXPECT_EQ("cba", deaths);
}

TEST(Lights, ALightThatHasAnOwnerIsDeletedAllTheSame) {
    std::string deaths;
    QObject form;
    {
        TLights lights;
        lights.Add(new Named('a', deaths, &form));
    }
    EXPECT_EQ("a", deaths);
    EXPECT_TRUE(form.children().isEmpty());
}

TEST(Lights, ALightDeletedElsewhereLeavesTheList) {
    std::string deaths;
    TLights lights;
    auto* one = new Named('a', deaths);
    auto* two = new Named('b', deaths);
    lights.Add(one);
    lights.Add(two);
    delete one;
    EXPECT_EQ(1, lights.Count());
    EXPECT_EQ(two, lights.getLights(0));
    EXPECT_EQ(0, lights.IndexOf(two));
    EXPECT_THROW(lights.getLights(1), EListError);
    EXPECT_EQ(1, lights.Add(new Named('c', deaths)));
}

TEST(Lights, AnOwnerThatTakesItsLightsEmptiesTheList) {
    auto form = std::make_unique<QObject>();
    TLights lights;
    lights.Add(new Tlight(form.get()));
    lights.Add(new Tlight(form.get()));
    form.reset();
    EXPECT_EQ(0, lights.Count());
}

TEST(Lights, ALightMayBeInTheListTwice) {
    std::string deaths;
    {
        TLights lights;
        auto* light = new Named('a', deaths);
        lights.Add(light);
        lights.Add(light);
        EXPECT_EQ(2, lights.Count());
        EXPECT_EQ(0, lights.Remove(light));
        EXPECT_EQ(1, lights.Count());
        EXPECT_EQ(0, lights.IndexOf(light));
        lights.Add(light);
    }
    EXPECT_EQ("a", deaths);
}

TEST(Lights, RemovingAndDeletingKeepTheLight) {
    std::string deaths;
    TLights lights;
    const auto one = std::make_unique<Named>('a', deaths);
    const auto two = std::make_unique<Named>('b', deaths);
    lights.Add(one.get());
    lights.Add(two.get());
    EXPECT_EQ(1, lights.Remove(two.get()));
    EXPECT_EQ(-1, lights.Remove(two.get()));
    lights.Delete(0);
    EXPECT_EQ(0, lights.Count());
    EXPECT_EQ("", deaths);
}

TEST(Lights, ClearingKeepsTheLights) {
    std::string deaths;
    const auto light = std::make_unique<Named>('a', deaths);
    {
        TLights lights;
        lights.Add(light.get());
        lights.Clear();
        EXPECT_EQ(0, lights.Count());
    }
    EXPECT_EQ("", deaths);
}

TEST(Lights, NothingIsNotAdded) {
    TLights lights;
    EXPECT_EQ(-1, lights.Add(nullptr));
    EXPECT_EQ(0, lights.Count());
    EXPECT_EQ(-1, lights.IndexOf(nullptr));
    EXPECT_EQ(-1, lights.Remove(nullptr));
}

TEST(Lights, ALightThatGoesMayTakeOthersAlong) {
    std::string deaths;
    class Pair : public Named {
      public:
        using Named::Named;
        ~Pair() override { delete partner.data(); }
        QPointer<Tlight> partner;
    };
    {
        TLights lights;
        auto* one = new Named('a', deaths);
        auto* two = new Pair('b', deaths);
        auto* three = new Named('c', deaths);
        two->partner = one;
        three->setParent(two);
        lights.Add(one);
        lights.Add(three);
        lights.Add(two);
    }
    EXPECT_EQ("abc", deaths);
}
