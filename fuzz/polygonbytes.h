#pragma once

#include <zk/_zkxyz/array.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

// Polygons out of arbitrary bytes. The first byte chooses what a coordinate is made of: a place on a small grid (one
// byte), a place on a fine grid (two bytes), or the bits of a double (eight bytes), which makes every number there is.
// The second byte is the number of vertices of the first polygon; those that are left belong to the others.
class PolygonBytes {
  public:
    PolygonBytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {
        kind_ = Byte() % 3;
        count_ = Byte();
    }

    std::vector<zk::TXY> First() { return Vertices(count_); }
    std::vector<zk::TXY> Next(std::size_t most) { return Vertices(most); }
    bool Empty() const { return size_ == 0; }

  private:
    std::uint8_t Byte() {
        if (size_ == 0)
            return 0;
        --size_;
        return *data_++;
    }
    double Coordinate() {
        if (kind_ == 0)
            return Byte() % 16;
        if (kind_ == 1) {
            const int high = Byte();
            return (high * 256 + Byte()) / 256.0;
        }
        std::uint8_t bytes[8];
        for (std::uint8_t& b : bytes)
            b = Byte();
        double number;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }
    std::vector<zk::TXY> Vertices(std::size_t most) {
        std::vector<zk::TXY> points;
        while (points.size() < most && size_ > 0) {
            const double x = Coordinate();
            points.push_back({x, Coordinate()});
        }
        return points;
    }

    const std::uint8_t* data_;
    std::size_t size_;
    int kind_;
    std::size_t count_;
};
