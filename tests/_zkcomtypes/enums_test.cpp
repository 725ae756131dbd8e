// OpenGL's header comes along to show that the names do not get into each other's way.
#include <zk/_zkcomtypes.h>

#include <GL/gl.h>
#include <QMetaEnum>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace zk;

namespace {

template <class E>
std::vector<std::string> names() {
    const QMetaEnum meta = QMetaEnum::fromType<E>();
    std::vector<std::string> found;
    for (int i = 0; i < meta.keyCount(); ++i) {
        EXPECT_EQ(i, meta.value(i));
        found.emplace_back(meta.key(i));
    }
    return found;
}

using Names = std::vector<std::string>;

}  // namespace

TEST(Enums, NamesAndOrder) {
    EXPECT_EQ((Names{"glpoint", "glline", "glfill"}), names<TPAMode>());
    EXPECT_EQ((Names{"glpoints", "gllines", "gllineloop", "gllinestrip", "gltriangles", "gltrianglesstrip",
                     "grtrianglefan", "glquads", "glquadstrip", "glpolygon"}),
              names<TPAStyle>());
    EXPECT_EQ((Names{"glfront", "glback", "glfrontandback"}), names<TMFace>());
    EXPECT_EQ((Names{"glmodulate", "gldecal", "glblend"}), names<TTexEnvMode>());
    EXPECT_EQ((Names{"glnearest", "gllinear"}), names<TTexFilter>());
    EXPECT_EQ((Names{"NoDefMat", "matGray", "matAqua", "matNavy", "matLtGray", "matRed"}), names<TDefmatKind>());
}

TEST(Enums, OrdinalsAreThoseOfTheNames) {
    EXPECT_EQ(0, glpoint);
    EXPECT_EQ(2, glfill);
    EXPECT_EQ(0, glpoints);
    EXPECT_EQ(6, grtrianglefan);
    EXPECT_EQ(9, glpolygon);
    EXPECT_EQ(0, glfront);
    EXPECT_EQ(2, glfrontandback);
    EXPECT_EQ(2, glblend);
    EXPECT_EQ(1, gllinear);
    EXPECT_EQ(0, NoDefMat);
    EXPECT_EQ(5, matRed);
}

TEST(Enums, OneByteEach) {
    EXPECT_EQ(1U, sizeof(TPAMode));
    EXPECT_EQ(1U, sizeof(TPAStyle));
    EXPECT_EQ(1U, sizeof(TMFace));
    EXPECT_EQ(1U, sizeof(TTexEnvMode));
    EXPECT_EQ(1U, sizeof(TTexFilter));
    EXPECT_EQ(1U, sizeof(TDefmatKind));
}

TEST(Enums, StylesAreNumberedAsOpenGLNumbersPrimitives) {
    EXPECT_EQ(GL_POINTS, glpoints);
    EXPECT_EQ(GL_LINES, gllines);
    EXPECT_EQ(GL_LINE_LOOP, gllineloop);
    EXPECT_EQ(GL_LINE_STRIP, gllinestrip);
    EXPECT_EQ(GL_TRIANGLES, gltriangles);
    EXPECT_EQ(GL_TRIANGLE_STRIP, gltrianglesstrip);
    EXPECT_EQ(GL_TRIANGLE_FAN, grtrianglefan);
    EXPECT_EQ(GL_QUADS, glquads);
    EXPECT_EQ(GL_QUAD_STRIP, glquadstrip);
    EXPECT_EQ(GL_POLYGON, glpolygon);
}

TEST(GlValues, AreOpenGLs) {
    EXPECT_EQ(GL_FRONT, int(glvalue::Front));
    EXPECT_EQ(GL_BACK, int(glvalue::Back));
    EXPECT_EQ(GL_FRONT_AND_BACK, int(glvalue::FrontAndBack));
    EXPECT_EQ(GL_POINT, int(glvalue::Point));
    EXPECT_EQ(GL_LINE, int(glvalue::Line));
    EXPECT_EQ(GL_FILL, int(glvalue::Fill));
    EXPECT_EQ(GL_CONSTANT_ATTENUATION, int(glvalue::ConstantAttenuation));
    EXPECT_EQ(GL_LINEAR_ATTENUATION, int(glvalue::LinearAttenuation));
    EXPECT_EQ(GL_QUADRATIC_ATTENUATION, int(glvalue::QuadraticAttenuation));
}
