#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

// The calls that a drawing operation makes itself: GLU's own drawing left out.
Calls callsOf(const std::function<void()>& draw) {
    GlRecorder recorder;
    draw();
    Calls calls =
        recorder.CallsTo({"glFrontFace", "glMatrixMode", "glTranslated", "gluQuadricOrientation", "gluQuadricTexture",
                          "gluSphere", "gluCylinder", "gluDisk", "gluPartialDisk", "gluDeleteQuadric"});
    // GLU makes a disk of a partial one
    std::erase_if(calls, [](const std::string& call) {
        return call.rfind("gluPartialDisk", 0) == 0 && call.find(", 0, 360)") != std::string::npos;
    });
    return calls;
}

const std::string outside = std::to_string(GLU_OUTSIDE);
const std::string inside = std::to_string(GLU_INSIDE);

}  // namespace

TEST(Quadrics, AreDrawnWithGlusOrientationAndLeaveTheCanvassOwn) {
    GlForm form;
    const auto around = [](const std::string& call, const char* before) {
        return Calls{"glFrontFace(GL_CCW)",
                     "gluQuadricTexture(1, 1)",
                     "gluQuadricOrientation(1, " + outside + ")",
                     call,
                     "gluDeleteQuadric(1)",
                     before};
    };
    EXPECT_EQ(callsOf([&] { form.canvas->Sphere(1.5, 7); }), around("gluSphere(1, 1.5, 7, 7)", "glFrontFace(GL_CW)"));
    EXPECT_EQ(callsOf([&] { form.canvas->Disk(0.5, 2, 6, 3); }),
              around("gluDisk(1, 0.5, 2, 6, 3)", "glFrontFace(GL_CW)"));
    EXPECT_TRUE(form.canvas->GetClockWise());
    form.canvas->SetClockWise(false);
    EXPECT_EQ(callsOf([&] { form.canvas->PartialDisk(0.5, 2, 6, 3, 10, 200); }),
              around("gluPartialDisk(1, 0.5, 2, 6, 3, 10, 200)", "glFrontFace(GL_CCW)"));
    EXPECT_FALSE(form.canvas->GetClockWise());
    form.canvas->SetClockWise(true);
}

TEST(Quadrics, ACylinderIsAMantleAndTwoDisks) {
    GlForm form;
    const Calls calls = callsOf([&] { form.canvas->Cylinder(3, 1, 2, 10, 5); });
    EXPECT_EQ(calls, (Calls{"glFrontFace(GL_CCW)",
                            "gluQuadricTexture(1, 1)",
                            "gluQuadricOrientation(1, " + outside + ")",
                            "gluQuadricTexture(2, 1)",
                            "gluQuadricOrientation(2, " + outside + ")",
                            "gluQuadricTexture(3, 1)",
                            "gluQuadricOrientation(3, " + inside + ")",
                            "gluCylinder(1, 3, 1, 2, 10, 5)",
                            "gluDisk(3, 0, 3, 10, 10)",
                            "glMatrixMode(GL_MODELVIEW)",
                            "glTranslated(0, 0, 2)",
                            "glMatrixMode(GL_MODELVIEW)",
                            "gluDisk(2, 0, 1, 10, 10)",
                            "glMatrixMode(GL_MODELVIEW)",
                            "glTranslated(0, 0, -2)",
                            "glMatrixMode(GL_MODELVIEW)",
                            "gluDeleteQuadric(3)",
                            "gluDeleteQuadric(2)",
                            "gluDeleteQuadric(1)",
                            "glFrontFace(GL_CW)"}));
}

TEST(Quadrics, WhatGluRefusesDrawsNothingAndRaisesNoError) {
    GlForm form;
    GlRecorder recorder;
    form.canvas->Sphere(-1, 10);
    form.canvas->Sphere(1, 1);
    form.canvas->Sphere(1, -5);
    form.canvas->Disk(2, 1, 10, 10);
    form.canvas->Disk(0, 1, 10, 0);
    form.canvas->PartialDisk(0, 1, 1, 10, 0, 90);
    form.canvas->Cylinder(-1, -1, 1, 10, 5);
    form.canvas->Cylinder(1, 1, -1, 1, -1);
    EXPECT_EQ(recorder.Count("glBegin"), 0);
}

TEST(Quadrics, ASubdivisionWithoutBoundsEnds) {
    GlForm form;
    form.canvas->Cylinder(1, 1, 1, 3, 2'000'000'000);
    form.canvas->Disk(0, 1, 3, 2'000'000'000);
    form.canvas->PartialDisk(0, 1, 3, 2'000'000'000, 0, 90);
    GlRecorder recorder({"gluDisk"});
    form.canvas->Cylinder(1, 1, 1, 2'000'000'000, 1);
    EXPECT_EQ(recorder.CallsTo({"gluDisk"}),
              (Calls{"gluDisk(3, 0, 1, 2000000000, 1000)", "gluDisk(2, 0, 1, 2000000000, 1000)"}));
}

TEST(Quadrics, NothingIsDrawnWithoutAContext) {
    GlForm form;
    TZkOglCanvas bare;
    GlRecorder recorder;
    bare.Sphere(1, 10);
    bare.Cylinder(1, 1, 1, 10, 5);
    bare.Disk(0, 1, 10, 5);
    bare.PartialDisk(0, 1, 10, 5, 0, 90);
    EXPECT_EQ(recorder.Calls(), Calls{});
}
