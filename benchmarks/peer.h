#pragma once

#include <cstddef>
#include <memory>
#include <vector>

// A scene library beside ours: the same objects, seen the same way, in the current OpenGL context. No header of such a
// library is included here, nor one of ours that brings OpenGL with it: their macros do not agree.
namespace zk::bench {

enum class PeerForm { box, sphere, cone };

struct PeerObject {
    PeerForm form;
    double x, y;             ///< of the lower left corner of a box, of the middle of the others; centimetres
    float red, green, blue;  ///< 0 to 1
};

class Peer {
  public:
    virtual ~Peer() = default;

    /// Objects of `size` centimetres, seen by an eye whose axes stand in the model as the rows of `eye` say, in a
    /// picture of `width` x `height` pixels with 30 of them a centimetre.
    virtual void Build(const std::vector<PeerObject>& objects, double size, const double (&eye)[3][3], int width,
                       int height) = 0;
    /// Clears the picture and draws.
    virtual void Draw() = 0;
    virtual void Move(std::size_t object, double by) = 0;
    virtual void Recolour(std::size_t object, float red, float green, float blue) = 0;
    /// How many objects lie within three pixels of a pixel, counted from the upper left.
    virtual int Pick(int x, int y) = 0;
};

#if defined(WITH_COIN)
std::unique_ptr<Peer> NewCoin();
#endif
#if defined(WITH_OSG)
std::unique_ptr<Peer> NewOsg();
#endif

}  // namespace zk::bench
