// What its own users write: a separator for each object, which caches what is below it by itself.
#include "peer.h"

#include <GL/gl.h>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/lists/SoPickedPointList.h>
#include <Inventor/nodes/SoCone.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoTranslation.h>

namespace zk::bench {

namespace {

class Coin : public Peer {
  public:
    Coin() { SoDB::init(); }
    ~Coin() override {
        if (root_)
            root_->unref();
    }

    void Build(const std::vector<PeerObject>& objects, double size, const double (&eye)[3][3], int width,
               int height) override {
        region_ = SbViewportRegion(short(width), short(height));
        root_ = new SoSeparator;
        root_->ref();
        auto* camera = new SoOrthographicCamera;
        camera->position = SbVec3f(0, 0, 50);
        camera->nearDistance = 1;
        camera->farDistance = 100;
        camera->height = float(height / 30.0);
        root_->addChild(camera);
        auto* light = new SoDirectionalLight;
        light->direction = SbVec3f(-1, -2, -3);
        root_->addChild(light);
        auto* view = new SoMatrixTransform;
        SbMatrix matrix = SbMatrix::identity();
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                matrix[column][row] = float(eye[row][column]);  // of rows: a point is multiplied from the left
        view->matrix = matrix;
        root_->addChild(view);
        auto* scene = new SoSeparator;
        root_->addChild(scene);
        for (const PeerObject& object : objects) {
            auto* separator = new SoSeparator;
            auto* material = new SoMaterial;
            material->diffuseColor = SbColor(object.red, object.green, object.blue);
            material->ambientColor = SbColor(object.red, object.green, object.blue);
            separator->addChild(material);
            auto* place = new SoTranslation;
            separator->addChild(place);
            const auto middle = float(size / 2);
            switch (object.form) {
                case PeerForm::box: {
                    place->translation = SbVec3f(float(object.x) + middle, float(object.y) + middle, middle);
                    auto* box = new SoCube;
                    box->width = box->height = box->depth = float(size);
                    separator->addChild(box);
                    break;
                }
                case PeerForm::sphere: {
                    place->translation = SbVec3f(float(object.x), float(object.y), 0);
                    auto* sphere = new SoSphere;
                    sphere->radius = middle;
                    separator->addChild(sphere);
                    break;
                }
                case PeerForm::cone: {
                    place->translation = SbVec3f(float(object.x), float(object.y), 0);
                    auto* cone = new SoCone;
                    cone->bottomRadius = middle;
                    cone->height = float(size);
                    separator->addChild(cone);
                }
            }
            scene->addChild(separator);
            places_.push_back(place);
            materials_.push_back(material);
        }
        render_ = std::make_unique<SoGLRenderAction>(region_);
        render_->setCacheContext(1);
    }

    void Draw() override {
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        render_->apply(root_);
    }

    void Move(std::size_t object, double by) override {
        SoTranslation& place = *places_[object];
        place.translation = place.translation.getValue() + SbVec3f(float(by), 0, 0);
    }

    void Recolour(std::size_t object, float red, float green, float blue) override {
        materials_[object]->diffuseColor = SbColor(red, green, blue);
    }

    int Pick(int x, int y) override {
        SoRayPickAction pick(region_);
        pick.setPoint(SbVec2s(short(x), short(region_.getViewportSizePixels()[1] - y)));
        pick.setRadius(3);
        pick.setPickAll(true);
        pick.apply(root_);
        return pick.getPickedPointList().getLength();
    }

  private:
    SbViewportRegion region_;
    SoSeparator* root_ = nullptr;
    std::vector<SoTranslation*> places_;
    std::vector<SoMaterial*> materials_;
    std::unique_ptr<SoGLRenderAction> render_;
};

}  // namespace

std::unique_ptr<Peer> NewCoin() {
    return std::make_unique<Coin>();
}

}  // namespace zk::bench
