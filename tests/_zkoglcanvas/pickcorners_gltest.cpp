// What a pick is sent in arrays is what is drawn, corner by corner.
#include "glform.h"
#include "glstate.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/host/workarounds.h>

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace zk;
using namespace zk::test;

namespace {

using Drawing = std::function<void(TZkOglCanvas&)>;

/// A form with one shape, whose drawing can be exchanged.
class PickCorners : public ::testing::Test {
  protected:
    PickCorners() {
        auto* shape = new TZKOglShape(form.window.get());
        TZKOglScene* scene = form.AddScene();
        shape->SetDisplayList(scene);
        QObject::connect(shape, &TZkShape::OnPlay, [this] {
            glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT);
            glPushMatrix();
            glRotated(35, 1, 2, 3);
            if (drawing)
                drawing(*form.canvas);
            glPopMatrix();
            glPopAttrib();
        });
        scene->Changed(nullptr);
    }

    // What picks all over the picture meet, and how far away.
    std::vector<std::vector<THitItem>> Picks() {
        std::vector<std::vector<THitItem>> found;
        for (int x = 3; x < 300; x += 36)
            for (int y = 5; y < 300; y += 36) {
                form.canvas->Select(x, y);
                found.push_back(form.canvas->Hits());
            }
        return found;
    }

    // How many were met.
    int ExpectSamePicks(const std::string& name, const Drawing& draw) {
        drawing = draw;
        const auto inArrays = Picks();
        SetOn(Workaround::SelectionCorners, false);
        const auto oneByOne = Picks();
        SetOn(Workaround::SelectionCorners, true);
        int met = 0;
        for (std::size_t i = 0; i < inArrays.size(); ++i) {
            EXPECT_EQ(inArrays[i].size(), oneByOne[i].size()) << name << ", place " << i;
            for (std::size_t hit = 0; hit < std::min(inArrays[i].size(), oneByOne[i].size()); ++hit) {
                ++met;
                EXPECT_EQ(inArrays[i][hit].HitObject, oneByOne[i][hit].HitObject) << name;
                EXPECT_NEAR(inArrays[i][hit].Depth, oneByOne[i][hit].Depth, 1e-4) << name << ", place " << i;
            }
        }
        return met;
    }

    GlForm form;
    Drawing drawing;
};

const std::map<std::string, Drawing> drawings{
    {"sphere", [](TZkOglCanvas& canvas) { canvas.Sphere(2, 7); }},
    {"finer sphere", [](TZkOglCanvas& canvas) { canvas.Sphere(2, 20); }},
    {"cylinder", [](TZkOglCanvas& canvas) { canvas.Cylinder(1.5, 0.5, 2, 5, 3); }},
    {"cone", [](TZkOglCanvas& canvas) { canvas.Cylinder(1.5, 0, 2, 9, 1); }},
    {"funnel", [](TZkOglCanvas& canvas) { canvas.Cylinder(0, 1.5, 2, 9, 4); }},
    {"disk", [](TZkOglCanvas& canvas) { canvas.Disk(0, 2, 5, 3); }},
    {"ring", [](TZkOglCanvas& canvas) { canvas.Disk(1, 2, 6, 2); }},
    {"sector", [](TZkOglCanvas& canvas) { canvas.PartialDisk(0.5, 2, 5, 3, 30, 100); }},
    {"sector against the clock", [](TZkOglCanvas& canvas) { canvas.PartialDisk(0, 2, 5, 3, 30, -200); }},
    {"more than a turn", [](TZkOglCanvas& canvas) { canvas.PartialDisk(1, 2, 4, 3, 20, -500); }},
    {"faces",
     [](TZkOglCanvas& canvas) {
         TlistOFxyzArray face;
         const std::array<TXYZ, 5> outline{{{-2, -2, 0}, {-2, 2, 1}, {2, 2, 1}, {2, -2, 0}, {-2, -2, 0}}};
         const std::array<TXYZ, 5> hole{{{-1, -1, 0.25}, {-1, 1, 0.75}, {1, 1, 0.75}, {1, -1, 0.25}, {-1, -1, 0.25}}};
         for (const auto& polygon : {outline, hole})
             ArrayAddData(*face.AddArray(), int(polygon.size()), polygon.data());
         canvas.PolyPolyline3D(face);
     }},
};

}  // namespace

TEST_F(PickCorners, MeetWhatIsDrawn) {
    for (const auto& [name, draw] : drawings)
        EXPECT_GT(ExpectSamePicks(name, draw), 0) << name;
}

// GLU divides by 239 at most, whatever it is asked for; without that bound a pick would not come to its end.
TEST_F(PickCorners, ASubdivisionWithoutBoundsEnds) {
    for (const bool inArrays : {true, false}) {
        SetOn(Workaround::SelectionCorners, inArrays);
        drawing = [](TZkOglCanvas& canvas) { canvas.Disk(0, 2, 2'000'000'000, 1); };
        EXPECT_TRUE(form.canvas->Select(150, 150));
        drawing = [](TZkOglCanvas& canvas) { canvas.Sphere(2, 2'000'000'000); };
        EXPECT_TRUE(form.canvas->Select(150, 150));
    }
    SetOn(Workaround::SelectionCorners, true);
}

TEST_F(PickCorners, RunTheSameWayRound) {
    for (const auto& [name, draw] : drawings) {
        int met = 0;
        for (const GLenum culled : {GL_FRONT, GL_BACK})
            met += ExpectSamePicks(name + ", one side culled", [&, draw = draw](TZkOglCanvas& canvas) {
                glEnable(GL_CULL_FACE);
                glCullFace(culled);
                draw(canvas);
            });
        EXPECT_GT(met, 0) << name;
    }
}

TEST_F(PickCorners, WiresAndPointsAreMetWhereTheyAreDrawn) {
    for (const auto& [name, draw] : drawings)
        for (const GLenum mode : {GL_LINE, GL_POINT})
            EXPECT_GT(ExpectSamePicks(name + ", not filled",
                                      [&, draw = draw](TZkOglCanvas& canvas) {
                                          glPolygonMode(GL_FRONT_AND_BACK, mode);
                                          draw(canvas);
                                      }),
                      0)
                << name;
}

TEST_F(PickCorners, WhatGluRefusesIsNotMetEither) {
    int played = 0;
    drawing = [&](TZkOglCanvas& canvas) {
        ++played;
        canvas.Sphere(-1, 10);
        canvas.Sphere(1, 1);
        canvas.Sphere(1, std::numeric_limits<int>::min());
        canvas.Disk(2, 1, 10, 10);
        canvas.Disk(-1, 1, 10, 10);
        canvas.Disk(0, 0, 10, 10);
        canvas.Disk(0, 1, 10, 0);
        canvas.PartialDisk(0, 1, 1, 10, 0, 90);
        canvas.Cylinder(-1, -1, 1, 10, 5);
        canvas.Cylinder(-1, -1, 1, 10, -5);
        canvas.Cylinder(-1, -1, -1, 1, 5);
    };
    EXPECT_FALSE(form.canvas->Select(150, 150));
    EXPECT_GT(played, 0);
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

// What user code has bound or enabled in OpenGL neither gets into a pick nor is changed by it.
TEST_F(PickCorners, LiveWithTheArraysOfOthers) {
    form.AddBox(form.AddScene(), 0, {2, 2, 2}, {0, 0, 0});
    ASSERT_TRUE(form.canvas->CheckCurrent());
    QOpenGLContext* context = QOpenGLContext::currentContext();
    QOpenGLExtraFunctions* gl = context->extraFunctions();
    const auto pickIsTheSame = [&](const char* under) {
        ASSERT_TRUE(form.canvas->CheckCurrent());
        const GlState before = CurrentGlState();
        EXPECT_TRUE(form.canvas->Select(150, 150)) << under;
        EXPECT_FALSE(form.canvas->Select(290, 10)) << under;
        EXPECT_EQ(PendingError(*form.canvas), 0U) << under;
        EXPECT_EQ(Difference(before, CurrentGlState()), "") << under;
    };
    pickIsTheSame("nothing");

    // Nobody may read there.
    const auto nowhere = reinterpret_cast<const void*>(std::uintptr_t(16));
    const std::vector<GLenum> arrays{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY,    GL_COLOR_ARRAY,
                                     GL_INDEX_ARRAY,  GL_EDGE_FLAG_ARRAY, GL_TEXTURE_COORD_ARRAY};
    glVertexPointer(4, GL_DOUBLE, 64, nowhere);
    glNormalPointer(GL_FLOAT, 0, nowhere);
    glColorPointer(4, GL_FLOAT, 0, nowhere);
    glTexCoordPointer(2, GL_FLOAT, 0, nowhere);
    for (const GLenum array : arrays)
        glEnableClientState(array);
    pickIsTheSame("enabled arrays");
    for (const GLenum array : arrays) {
        EXPECT_TRUE(glIsEnabled(array)) << array;
        glDisableClientState(array);
    }
    void* pointer = nullptr;
    glGetPointerv(GL_VERTEX_ARRAY_POINTER, &pointer);
    EXPECT_EQ(pointer, nowhere);

    gl->glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nowhere);
    gl->glEnableVertexAttribArray(0);
    pickIsTheSame("an array in the place of the corners");
    GLint enabled = 0;
    gl->glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
    EXPECT_EQ(enabled, GL_TRUE);
    gl->glDisableVertexAttribArray(0);

    GLuint buffer = 0;
    gl->glGenBuffers(1, &buffer);
    gl->glBindBuffer(GL_ARRAY_BUFFER, buffer);
    pickIsTheSame("a buffer");
    gl->glBindBuffer(GL_ARRAY_BUFFER, 0);
    gl->glDeleteBuffers(1, &buffer);

    GLuint object = 0;
    gl->glGenVertexArrays(1, &object);
    gl->glBindVertexArray(object);
    pickIsTheSame("an array object");
    gl->glBindVertexArray(0);
    gl->glDeleteVertexArrays(1, &object);

    int depth = 0;
    glGetIntegerv(GL_MAX_CLIENT_ATTRIB_STACK_DEPTH, &depth);
    for (int i = 0; i < depth; ++i)
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    EXPECT_TRUE(form.canvas->Select(150, 150));
    for (int i = 0; i < depth; ++i)
        glPopClientAttrib();
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}
