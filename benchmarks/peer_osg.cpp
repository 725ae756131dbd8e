// What its own users write: a transform and a drawable for each object, with about as many corners as ours have.
#include "peer.h"

#include <osg/Geode>
#include <osg/Light>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/ShapeDrawable>
#include <osgUtil/IntersectionVisitor>
#include <osgUtil/PolytopeIntersector>
#include <osgViewer/Viewer>

namespace zk::bench {

namespace {

class Osg : public Peer {
  public:
    void Build(const std::vector<PeerObject>& objects, double size, const double (&eye)[3][3], int width,
               int height) override {
        height_ = height;
        osg::ref_ptr<osg::Group> scene = new osg::Group;
        osg::ref_ptr<osg::TessellationHints> fineness = new osg::TessellationHints;
        fineness->setDetailRatio(0.7F);  // spheres of 28 x 14
        osg::ref_ptr<osg::TessellationHints> coarse = new osg::TessellationHints;
        coarse->setDetailRatio(0.25F);  // cones of 10
        for (const PeerObject& object : objects) {
            const auto middle = float(size / 2);
            osg::ref_ptr<osg::Shape> shape;
            osg::Vec3d at(object.x, object.y, 0);
            switch (object.form) {
                case PeerForm::box:
                    shape = new osg::Box(osg::Vec3(), float(size));
                    at += osg::Vec3d(middle, middle, middle);
                    break;
                case PeerForm::sphere:
                    shape = new osg::Sphere(osg::Vec3(), middle);
                    break;
                case PeerForm::cone:
                    shape = new osg::Cone(osg::Vec3(), middle, float(size));
            }
            osg::ref_ptr<osg::ShapeDrawable> drawable =
                new osg::ShapeDrawable(shape, object.form == PeerForm::cone ? coarse : fineness);
            osg::ref_ptr<osg::Material> material = new osg::Material;
            material->setDiffuse(osg::Material::FRONT, {object.red, object.green, object.blue, 1});
            material->setAmbient(osg::Material::FRONT, {object.red, object.green, object.blue, 1});
            drawable->getOrCreateStateSet()->setAttribute(material);
            osg::ref_ptr<osg::MatrixTransform> place = new osg::MatrixTransform(osg::Matrix::translate(at));
            place->setDataVariance(osg::Object::DYNAMIC);
            place->addChild(drawable);
            scene->addChild(place);
            places_.push_back(place);
            materials_.push_back(material);
        }
        viewer_.setThreadingModel(osgViewer::Viewer::SingleThreaded);
        viewer_.setUpViewerAsEmbeddedInWindow(0, 0, width, height);
        osg::Camera& camera = *viewer_.getCamera();
        camera.setClearColor({0, 0, 0, 1});
        camera.setComputeNearFarMode(osg::Camera::DO_NOT_COMPUTE_NEAR_FAR);
        camera.setProjectionMatrixAsOrtho(-width / 60.0, width / 60.0, -height / 60.0, height / 60.0, -50, 50);
        osg::Matrixd view;
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                view(column, row) = eye[row][column];  // of rows: a point is multiplied from the left
        camera.setViewMatrix(view);
        viewer_.setLightingMode(osg::View::HEADLIGHT);
        viewer_.setSceneData(scene);
        viewer_.realize();
    }

    void Draw() override { viewer_.frame(); }

    void Move(std::size_t object, double by) override {
        osg::MatrixTransform& place = *places_[object];
        place.setMatrix(place.getMatrix() * osg::Matrix::translate(by, 0, 0));
    }

    void Recolour(std::size_t object, float red, float green, float blue) override {
        materials_[object]->setDiffuse(osg::Material::FRONT, {red, green, blue, 1});
    }

    int Pick(int x, int y) override {
        osg::ref_ptr<osgUtil::PolytopeIntersector> around = new osgUtil::PolytopeIntersector(
            osgUtil::Intersector::WINDOW, x - 3, height_ - y - 3, x + 3, height_ - y + 3);
        osgUtil::IntersectionVisitor visitor(around);
        viewer_.getCamera()->accept(visitor);
        return int(around->getIntersections().size());
    }

  private:
    osgViewer::Viewer viewer_;
    int height_ = 0;
    std::vector<osg::ref_ptr<osg::MatrixTransform>> places_;
    std::vector<osg::ref_ptr<osg::Material>> materials_;
};

}  // namespace

std::unique_ptr<Peer> NewOsg() {
    return std::make_unique<Osg>();
}

}  // namespace zk::bench
