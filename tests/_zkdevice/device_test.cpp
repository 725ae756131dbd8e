#include <zk/_zkdevice.h>

#include <QPointer>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

using namespace zk;

namespace {

/// Notes what the device does with itself.
class Noting : public TZKDevice {
  public:
    using TZKDevice::changeCount_;
    using TZKDevice::state_;
    using TZKDevice::TZKDevice;

    void BeginPaint() override {
        log += '[';
        TZKDevice::BeginPaint();
        EXPECT_TRUE(GetDeviceStates().Contains(DsPainting));
        if (inPaint)
            inPaint();
    }
    void EndPaint() override {
        TZKDevice::EndPaint();
        EXPECT_FALSE(GetDeviceStates().Contains(DsPainting));
        log += ']';
    }
    void SetBlickWinkel(double value) override {
        log += 'w';
        TZKDevice::SetBlickWinkel(value);
    }
    void SetProjectionbase(const TBAse& value) override {
        log += 'p';
        TZKDevice::SetProjectionbase(value);
    }
    std::string take() { return std::exchange(log, {}); }

    std::string log;
    std::function<void()> inPaint;
};

constexpr TBAse Turned{{1, 2, 3}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}};

}  // namespace

TEST(Device, ANewOne) {
    const TZKDevice device;
    EXPECT_EQ((TRect{0, 0, 180, 180}), device.GetBounds());
    EXPECT_EQ(0, device.GetLeft());
    EXPECT_EQ(0, device.GetTop());
    EXPECT_EQ(180, device.GetWidth());
    EXPECT_EQ(180, device.GetHeight());
    EXPECT_EQ(Unitbase, device.GetprojectionBAse());
    EXPECT_EQ(Identity, device.GetModelMatrix());
    EXPECT_EQ(Unitbase, device.GetDrawBAse());
    EXPECT_TRUE(device.GetEnabled2d());
    EXPECT_TRUE(device.GetEnabled3d());
    EXPECT_EQ(30.0, device.GetUnitsPerCm());
    EXPECT_EQ(30.0, device.GetDefaultUNits());
    EXPECT_EQ(0.0, device.GetBlickwinkel());
    EXPECT_EQ(nullptr, device.GetPrimdevice());
    EXPECT_EQ(QStringLiteral("Tlight"), device.GetLightClass().name);
    ASSERT_NE(nullptr, device.getLights());
    EXPECT_EQ(0, device.getLights()->Count());
    EXPECT_EQ(QStringLiteral("Tlight"), device.getLights()->LightClass().name);
    ASSERT_NE(nullptr, device.getAttributes());
    EXPECT_EQ(TDeviceState(), device.GetDeviceStates());
    EXPECT_FALSE(device.GetChanging());
}

TEST(Device, PublishesNothingOfItsOwn) {
    const QMetaObject& meta = TZKDevice::staticMetaObject;
    EXPECT_EQ(meta.propertyOffset(), meta.propertyCount());
}

TEST(Device, PlainSettersStoreAndNothingElse) {
    Noting device;
    device.SetUnitsPerCm(12.5);
    device.SetDefaultUNits(-1);
    device.Setenabled2d(false);
    device.Setenabled3d(false);
    device.SetModelMatrix(NullMat);
    TZKPrimdevice prim;
    device.SetPRimdevice(&prim);
    EXPECT_EQ("", device.take());
    device.SetBlickWinkel(77);
    device.SetProjectionbase(Turned);
    EXPECT_EQ("wp", device.take());
    EXPECT_EQ(12.5, device.GetUnitsPerCm());
    EXPECT_EQ(-1, device.GetDefaultUNits());
    EXPECT_FALSE(device.GetEnabled2d());
    EXPECT_FALSE(device.GetEnabled3d());
    EXPECT_EQ(NullMat, device.GetModelMatrix());
    EXPECT_EQ(&prim, device.GetPrimdevice());
    EXPECT_EQ(77, device.GetBlickwinkel());
    EXPECT_EQ(Turned, device.GetprojectionBAse());
}

TEST(Device, LeftAndTopMoveAlone) {
    TZKDevice device;
    device.SetLeft(10);
    device.SetTop(-20);
    EXPECT_EQ((TRect{10, -20, 180, 180}), device.GetBounds());
    EXPECT_EQ(170, device.GetWidth());
    EXPECT_EQ(200, device.GetHeight());
    device.SetWidth(300);
    device.SetHeight(100);
    EXPECT_EQ((TRect{10, -20, 310, 80}), device.GetBounds());
    EXPECT_EQ(10, device.GetLeft());
    EXPECT_EQ(-20, device.GetTop());
}

TEST(Device, BoundsBeyond32BitsWrap) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    TZKDevice device;
    device.SetLeft(highest);
    device.SetWidth(highest);
    EXPECT_EQ(highest, device.GetWidth());
    device.SetLeft(lowest);
    device.SetWidth(-1);
    EXPECT_EQ(-1, device.GetWidth());
    device.WtoPixel({1, 1, 1});
}

TEST(Device, TheDrawFrameIsTheModelMatrix) {
    TZKDevice device;
    device.SetDrawbase(Turned);
    EXPECT_EQ(Turned, device.GetDrawBAse());
    Tmatrix expected = Identity;
    const double rows[4][3] = {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {1, 2, 3}};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 3; ++j)
            expected[i][j] = rows[i][j];
    EXPECT_EQ(expected, device.GetModelMatrix());

    struct Other : TZKDevice {
        void SetModelMatrix(const Tmatrix& value) override {
            ++sets;
            TZKDevice::SetModelMatrix(value);
        }
        int sets = 0;
    } other;
    other.SetDrawbase(Turned);
    EXPECT_EQ(1, other.sets);
}

TEST(Device, TheOwnerDeletesIt) {
    auto form = std::make_unique<QObject>();
    const QPointer<TZKDevice> device = new TZKDevice(form.get());
    const QPointer<Tattributes> attributes = device->getAttributes();
    form.reset();
    EXPECT_TRUE(device.isNull());
    EXPECT_TRUE(attributes.isNull());
}

TEST(Device, ADeletedPrimdeviceReadsAsNone) {
    TZKDevice device;
    auto prim = std::make_unique<TZKPrimdevice>();
    device.SetPRimdevice(prim.get());
    prim.reset();
    EXPECT_EQ(nullptr, device.GetPrimdevice());
    device.Moveto3d({});
    device.LineTo3d({});
    device.PolyPolyline3D(TlistOFxyzArray());
}

TEST(DeviceLights, AreListedInOrderAndNotDeletedWithTheDevice) {
    const auto one = std::make_unique<Tlight>();
    const QPointer<Tlight> two = new Tlight;
    {
        TZKDevice device;
        device.AddLight(one.get());
        device.AddLight(two);
        device.AddLight(one.get());
        ASSERT_EQ(3, device.getLights()->Count());
        EXPECT_EQ(one.get(), device.getLights()->getLights(0));
        EXPECT_EQ(two.data(), device.getLights()->getLights(1));
        device.RemoveLight(one.get());
        EXPECT_EQ(2, device.getLights()->Count());
        EXPECT_EQ(two.data(), device.getLights()->getLights(0));
        device.RemoveLight(nullptr);
        device.AddLight(nullptr);
        EXPECT_EQ(2, device.getLights()->Count());
    }
    ASSERT_FALSE(two.isNull());
    delete two.data();
}

TEST(DeviceLights, FormAndDeviceMayGoInAnyOrder) {
    for (const bool deviceFirst : {false, true}) {
        auto form = std::make_unique<QObject>();
        auto device = std::make_unique<TZKDevice>();
        device->AddLight(new Tlight(form.get()));
        if (deviceFirst)
            device.reset();
        form.reset();
        if (device) {
            EXPECT_EQ(0, device->getLights()->Count());
        }
    }
}

TEST(DeviceLights, ALightDeletedElsewhereLeavesTheList) {
    TZKDevice device;
    auto light = std::make_unique<Tlight>();
    device.AddLight(light.get());
    light.reset();
    EXPECT_EQ(0, device.getLights()->Count());
}

TEST(DeviceLights, AnotherClassDeletesTheLights) {
    TZKDevice device;
    const QPointer<Tlight> light = new Tlight;
    device.AddLight(light);
    device.SetLightClass({QStringLiteral("Other"), nullptr});
    EXPECT_TRUE(light.isNull());
    EXPECT_EQ(0, device.getLights()->Count());
    EXPECT_EQ(QStringLiteral("Other"), device.GetLightClass().name);
    EXPECT_EQ(QStringLiteral("Other"), device.getLights()->LightClass().name);
}

TEST(DeviceLights, ALightMayTakeItselfOutWhileItGoes) {
    class Leaving : public Tlight {
      public:
        explicit Leaving(TZKDevice& device) : device_(device) {}
        ~Leaving() override {
            AnnounceRemoval();
            device_.RemoveLight(this);
        }

      private:
        TZKDevice& device_;
    };
    TZKDevice device;
    for (int i = 0; i < 3; ++i)
        device.AddLight(new Leaving(device));
    device.SetLightClass(Tlight::Class());
    EXPECT_EQ(0, device.getLights()->Count());
    device.AddLight(new Leaving(device));
    delete device.getLights()->getLights(0);
    EXPECT_EQ(0, device.getLights()->Count());
}

TEST(DeviceLights, ADescendantMayOwnItsLights) {
    class Owning : public TZKDevice {
      public:
        ~Owning() override {
            AnnounceRemoval();
            FreeLights();
        }
    };
    QPointer<Tlight> light = new Tlight;
    {
        Owning device;
        device.AddLight(light);
    }
    EXPECT_TRUE(light.isNull());
}

TEST(DeviceAttributes, AsOneValue) {
    TZKDevice device;
    TAttributesKind kind = device.getAttributeskind();
    EXPECT_EQ(Tmaterial().GetMAterialKind(), kind.Material);
    EXPECT_EQ(TTexture().GettextureKind(), kind.Texture);
    EXPECT_EQ(glfill, kind.Mode);
    EXPECT_EQ(glpolygon, kind.Style);

    kind.Material = maAqua;
    kind.Texture.Picture = QStringLiteral("wall.bmp");
    kind.Texture.Visible = true;
    kind.Mode = glline;
    kind.Style = glquads;
    device.SetAttributeskind(kind);
    EXPECT_EQ(kind, device.getAttributeskind());
    EXPECT_EQ(maAqua, device.getAttributes()->getMaterial()->GetMAterialKind());
    EXPECT_EQ(glquads, device.getAttributes()->getPolyStyle()->GetStyle());
}

TEST(DeviceAttributes, AreAppliedInOrder) {
    TZKDevice device;
    std::string order;
    QObject receiver;
    Tattributes* set = device.getAttributes();
    set->HookChanges(&receiver, [&order, set](QObject* sender) {
        order += sender == set->getTexture() ? 't' : sender == set->getMaterial() ? 'm' : 'p';
    });
    device.SetAttributeskind({});
    EXPECT_EQ("tmmmmmmmmpp", order);
}

TEST(DeviceAttributes, MissingObjectsGiveDefaults) {
    TZKDevice device;
    device.getAttributes()->ReplaceMaterial(nullptr);
    device.getAttributes()->ReplacePolyStyle(nullptr);
    device.getAttributes()->ReplaceTexture(nullptr);
    EXPECT_EQ(TAttributesKind(), device.getAttributeskind());
    device.SetAttributeskind({});
    delete device.getAttributes();
    EXPECT_EQ(nullptr, device.getAttributes());
    EXPECT_EQ(TAttributesKind(), device.getAttributeskind());
    device.SetAttributeskind({});
}

TEST(DeviceAttributes, AnOverriddenSetTakesPart) {
    struct Other : TZKDevice {
        Tattributes* getAttributes() const override { return const_cast<Tattributes*>(&set); }
        Tattributes set;
    } device;
    device.set.getMaterial()->SetMAterialKind(maRed);
    EXPECT_EQ(maRed, device.getAttributeskind().Material);
}

TEST(DevicePaint, RefreshPaintsOnce) {
    Noting device;
    device.Refresh();
    EXPECT_EQ("[]", device.take());
}

TEST(DevicePaint, RefreshInsideAPaintDoesNothing) {
    Noting device;
    device.inPaint = [&device] {
        device.Refresh();
        device.SetChanging(true);
        device.SetChanging(false);
    };
    device.Refresh();
    EXPECT_EQ("[]", device.take());
    device.inPaint = nullptr;
    device.BeginPaint();
    device.Refresh();
    EXPECT_EQ("[", device.take());
    device.EndPaint();
    EXPECT_EQ("]", device.take());
}

TEST(DevicePaint, AnErrorEndsThePaint) {
    Noting device;
    device.inPaint = [] { throw std::runtime_error("drawing failed"); };
    EXPECT_THROW(device.Refresh(), std::runtime_error);
    EXPECT_FALSE(device.GetDeviceStates().Contains(DsPainting));
    device.inPaint = nullptr;
    device.take();
    device.Refresh();
    EXPECT_EQ("[]", device.take());
}

TEST(DevicePaint, NothingIsPaintedWhileValuesAreLoadedOrStored) {
    Noting device;
    for (const TComponentStateFlag flag : {csLoading, csReading, csWriting, csUpdating}) {
        device.state_ = flag;
        device.Refresh();
        EXPECT_EQ("", device.take()) << flag;
    }
    device.state_ = csDesigning;
    device.Refresh();
    EXPECT_EQ("[]", device.take());
}

TEST(DevicePaint, BatchesRefreshOnceOnTheLastClose) {
    Noting device;
    device.SetChanging(true);
    device.SetChanging(true);
    EXPECT_TRUE(device.GetChanging());
    device.Refresh();
    device.SetChanging(false);
    EXPECT_EQ("", device.take());
    EXPECT_TRUE(device.GetChanging());
    device.SetChanging(false);
    EXPECT_EQ("[]", device.take());
    EXPECT_FALSE(device.GetChanging());
}

TEST(DevicePaint, ASurplusCloseSilencesUntilItIsMadeGood) {
    Noting device;
    device.SetChanging(false);
    device.Refresh();
    EXPECT_EQ("", device.take());
    EXPECT_EQ(-1, device.changeCount_);
    device.SetChanging(false);
    device.SetChanging(true);
    EXPECT_EQ("", device.take());
    device.SetChanging(true);
    EXPECT_EQ("[]", device.take());
    device.Refresh();
    EXPECT_EQ("[]", device.take());
}

TEST(DevicePaint, TheCountWrapsAtItsEnds) {
    Noting device;
    device.changeCount_ = std::numeric_limits<std::int32_t>::max();
    device.SetChanging(true);
    EXPECT_EQ(std::numeric_limits<std::int32_t>::min(), device.changeCount_);
    device.SetChanging(false);
    EXPECT_EQ(std::numeric_limits<std::int32_t>::max(), device.changeCount_);
}

TEST(DevicePaint, LoadedAppliesTheViewAndRefreshesOnce) {
    Noting device;
    device.BeginLoading();
    device.SetBlickWinkel(20);
    device.SetProjectionbase(Turned);
    device.Refresh();
    device.SetChanging(false);  // an unbalanced bracket of a form that failed half-way is forgotten
    EXPECT_EQ("wp", device.take());
    device.Loaded();
    EXPECT_EQ("wp[]", device.take());
    EXPECT_FALSE(device.IsLoadingOrStoring());
    EXPECT_EQ(0, device.changeCount_);
    EXPECT_EQ(20, device.GetBlickwinkel());
    EXPECT_EQ(Turned, device.GetprojectionBAse());
}
