#include <zk/_zkdevice/device.h>
#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/message.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace zk;

namespace {

using Pixels = std::vector<TXYI>;

/// A 2D device that notes what is drawn.
class PaperDevice : public TZKPrimdevice {
  public:
    void MoveTo(int x, int y) override { calls += 'M', pixels.push_back({x, y}); }
    void LineTo(int x, int y) override { calls += 'L', pixels.push_back({x, y}); }
    void PolyPolyline(const TlistOFXYiArray& list) override {
        calls += 'P';
        if (fail)
            throw std::runtime_error("out of ink");
        for (int i = 0; i < list.Count(); ++i) {
            const auto items = list[i]->Items();
            lines.emplace_back(items.begin(), items.end());
        }
    }

    std::string calls;
    Pixels pixels;
    std::vector<Pixels> lines;
    bool fail = false;
};

void fill(TXYZARRAY& array, std::initializer_list<TXYZ> points) {
    Arraysetcount(array, 0);
    for (const TXYZ& point : points)
        ArrayAppendData(array, &point);
}

class Drawing : public testing::Test {
  protected:
    Drawing() { device.SetPRimdevice(&paper); }

    static void fillTwoLines(TlistOFxyzArray& list) {
        fill(*list.AddArray(), {{0, 0, 0}, {1, 1, 0}, {1, 1, 5}});
        fill(*list.AddArray(), {{-1, 0, 0}, {0, -1, 0}});
    }

    PaperDevice paper;
    TZKDevice device;
};

const Pixels FirstLine{{90, 90}, {120, 60}, {120, 60}};
const Pixels SecondLine{{60, 90}, {90, 120}};

}  // namespace

TEST_F(Drawing, MovesAndLinesGoToPixels) {
    device.Moveto3d({0, 0, 0});
    device.LineTo3d({1, 1, 0});
    EXPECT_EQ("ML", paper.calls);
    EXPECT_EQ((Pixels{{90, 90}, {120, 60}}), paper.pixels);
}

TEST_F(Drawing, ThePolylinesOfAListAreDrawnInOneCall) {
    TlistOFxyzArray list;
    fillTwoLines(list);
    device.PolyPolyline3D(list);
    EXPECT_EQ("P", paper.calls);
    EXPECT_EQ((std::vector<Pixels>{FirstLine, SecondLine}), paper.lines);
    EXPECT_EQ(2, list.Count());
}

TEST_F(Drawing, EmptyListsAndArraysAreDrawnAsSuch) {
    TlistOFxyzArray list;
    device.PolyPolyline3D(list);
    EXPECT_EQ("P", paper.calls);
    EXPECT_TRUE(paper.lines.empty());
    list.AddArray();
    list.TPointerList::Add(nullptr);
    device.PolyPolyline3D(list);
    EXPECT_EQ((std::vector<Pixels>{{}, {}}), paper.lines);
}

TEST_F(Drawing, APolylineIsAListOfOne) {
    ArrayOwner<TXYZARRAY> array;
    fill(*array, {{0, 0, 0}, {1, 1, 0}, {1, 1, 5}});
    const void* block = array->Data;
    device.PolyLine3D(*array);
    EXPECT_EQ((std::vector<Pixels>{FirstLine}), paper.lines);
    EXPECT_EQ(block, array->Data);
    EXPECT_EQ(3, array->Count);
}

TEST_F(Drawing, APolylineGoesThroughTheOverriddenListOperation) {
    struct Other : TZKDevice {
        void PolyPolyline3D(const TlistOFxyzArray& list) override {
            EXPECT_EQ(1, list.Count());
            seen = list[0];
        }
        const TXYZARRAY* seen = nullptr;
    } other;
    ArrayOwner<TXYZARRAY> array;
    other.PolyLine3D(*array);
    EXPECT_EQ(&*array, other.seen);
}

TEST_F(Drawing, AnErrorWhileDrawingLeavesTheCallersArray) {
    paper.fail = true;
    ArrayOwner<TXYZARRAY> array;
    fill(*array, {{0, 0, 0}, {1, 1, 0}});
    EXPECT_THROW(device.PolyLine3D(*array), std::runtime_error);
    EXPECT_EQ(2, array->Count);
    EXPECT_EQ((TXYZ{1, 1, 0}), (*array)[1]);
}

TEST_F(Drawing, NothingIsDrawnWhileSwitchedOff) {
    ArrayOwner<TXYZARRAY> array;
    TlistOFxyzArray list;
    device.Setenabled3d(false);
    device.Moveto3d({});
    device.LineTo3d({});
    device.PolyLine3D(*array);
    device.PolyPolyline3D(list);
    EXPECT_EQ("", paper.calls);
    device.Setenabled3d(true);
    device.Setenabled2d(false);  // that one is for descendants
    device.Moveto3d({});
    EXPECT_EQ("M", paper.calls);
}

TEST_F(Drawing, NothingIsDrawnWithoutA2DDevice) {
    ArrayOwner<TXYZARRAY> array;
    device.SetPRimdevice(nullptr);
    device.Moveto3d({});
    device.LineTo3d({});
    device.PolyLine3D(*array);
    device.PolyPolyline3D(TlistOFxyzArray());
    device.Circle2d({1, 2}, 3);
    EXPECT_EQ("", paper.calls);
}

TEST_F(Drawing, TheCircleIsForDescendants) {
    device.Circle2d({0, 0}, 1);
    EXPECT_EQ("", paper.calls);
}

TEST_F(Drawing, ALongPolylineIsDrawnWhole) {
    const MessageHandler before = SetMessageHandler([](const std::string&) {});
    ArrayOwner<TXYZARRAY> array;
    Arraysetcount(*array, 5000);
    device.PolyLine3D(*array);
    ASSERT_EQ(1U, paper.lines.size());
    EXPECT_EQ(5000U, paper.lines[0].size());
    EXPECT_EQ((TXYI{90, 90}), paper.lines[0][4999]);
    SetMessageHandler(before);
}

TEST(DrawingArrays, PointsToPixels) {
    const TZKDevice device;
    ArrayOwner<TXYZARRAY> points;
    fill(*points, {{0, 0, 0}, {1, 1, 0}, {-1, -1, 9}});
    ArrayOwner<TXYIARRAY> pixels;
    Arraysetcount(*pixels, 7);
    device.Poly3dtoScr(*points, *pixels);
    EXPECT_EQ((Pixels{{90, 90}, {120, 60}, {60, 120}}), Pixels(pixels->Items().begin(), pixels->Items().end()));
    fill(*points, {});
    device.Poly3dtoScr(*points, *pixels);
    EXPECT_EQ(0, pixels->Count);
}

TEST(DrawingArrays, ArraysThatWereNeverMadeReadyAreHarmless) {
    const TZKDevice device;
    ArrayOwner<TXYZARRAY> points;
    fill(*points, {{0, 0, 0}, {1, 1, 0}});
    TXYIARRAY raw;
    device.Poly3dtoScr(*points, raw);
    EXPECT_EQ(2, raw.Count);
    EXPECT_TRUE(raw.Items().empty());
    ArrayDispose(raw);

    TXYZARRAY broken;
    broken.Count = 5;
    ArrayOwner<TXYIARRAY> pixels;
    device.Poly3dtoScr(broken, *pixels);
    EXPECT_EQ(5, pixels->Count);
}

TEST(DrawingTransform, WithTheIdentityTheListItselfComesBack) {
    TZKDevice device;
    const TlistOFxyzArray list;
    Tmatrix matrix = NullMat;
    bool transformed = true;
    EXPECT_EQ(&list, device.Checktrf(list, matrix, transformed));
    EXPECT_FALSE(transformed);
    EXPECT_EQ(Identity, matrix);
    device.SetModelMatrix(NullMat);
    device.CloseCheck(&list, matrix, transformed);
    EXPECT_EQ(NullMat, device.GetModelMatrix());
}

TEST(DrawingTransform, NearlyTheIdentityIsTheIdentity) {
    TZKDevice device;
    Tmatrix nearly = Identity;
    nearly[3][0] = 1e-12;
    device.SetModelMatrix(nearly);
    const TlistOFxyzArray list;
    Tmatrix matrix;
    bool transformed = true;
    EXPECT_EQ(&list, device.Checktrf(list, matrix, transformed));
    EXPECT_FALSE(transformed);
}

TEST(DrawingTransform, OtherwiseACopyIsTransformed) {
    TZKDevice device;
    Tmatrix moved = Identity;
    moved[3][0] = 10;
    moved[1][1] = 2;
    device.SetModelMatrix(moved);
    TlistOFxyzArray list;
    fill(*list.AddArray(), {{1, 2, 3}, {4, 5, 6}});
    list.AddArray();

    Tmatrix matrix;
    bool transformed = false;
    const TlistOFxyzArray* copy = device.Checktrf(list, matrix, transformed);
    EXPECT_TRUE(transformed);
    EXPECT_EQ(moved, matrix);
    ASSERT_NE(&list, copy);
    ASSERT_EQ(2, copy->Count());
    ASSERT_EQ(2, (*copy)[0]->Count);
    EXPECT_EQ((TXYZ{11, 4, 3}), (*(*copy)[0])[0]);
    EXPECT_EQ((TXYZ{14, 10, 6}), (*(*copy)[0])[1]);
    EXPECT_EQ(0, (*copy)[1]->Count);
    EXPECT_EQ((TXYZ{1, 2, 3}), (*list[0])[0]);

    device.SetModelMatrix(Identity);
    device.CloseCheck(copy, matrix, transformed);
    EXPECT_EQ(moved, device.GetModelMatrix());
}

TEST(DrawingTransform, ClosingTakesNothingForAnswer) {
    TZKDevice device;
    Tmatrix matrix = NullMat;
    device.CloseCheck(nullptr, matrix, false);
    EXPECT_EQ(Identity, device.GetModelMatrix());
    device.CloseCheck(nullptr, matrix, true);
    EXPECT_EQ(NullMat, device.GetModelMatrix());
}

TEST(DrawingTransform, OverriddenMatricesTakePart) {
    struct Other : TZKDevice {
        Tmatrix GetModelMatrix() const override { return NullMat; }
        void SetModelMatrix(const Tmatrix&) override { ++sets; }
        int sets = 0;
    } device;
    TlistOFxyzArray list;
    fill(*list.AddArray(), {{1, 2, 3}});
    Tmatrix matrix = Identity;
    bool transformed = false;
    const TlistOFxyzArray* copy = device.Checktrf(list, matrix, transformed);
    EXPECT_EQ(NullMat, matrix);
    EXPECT_EQ(Nullxyz, (*(*copy)[0])[0]);
    device.CloseCheck(copy, matrix, transformed);
    EXPECT_EQ(1, device.sets);
}
