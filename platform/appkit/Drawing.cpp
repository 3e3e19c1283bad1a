#include "platform/appkit/Drawing.h"

#include <utility>

namespace mirrolet::platform {

namespace {
Drawing* currentDrawing = nullptr;
}

Drawing::Drawing(QPainter& target) : painter(target), outer(std::exchange(currentDrawing, this)) {}

Drawing::~Drawing() {
    currentDrawing = outer;
}

Drawing* Drawing::current() {
    return currentDrawing;
}

} // namespace mirrolet::platform
