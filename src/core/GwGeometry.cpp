#include "GwGeometry.h"

#include <algorithm>

GwPosition GwPosition::operator+(GwPosition const& o) const {
    return GwPosition(mX + o.mX, mY + o.mY);
}
GwPosition GwPosition::operator-(GwPosition const& o) const {
    return GwPosition(mX - o.mX, mY - o.mY);
}
GwPosition& GwPosition::operator+=(GwPosition const& o) {
    return *this = *this + o;
}
GwPosition& GwPosition::operator-=(GwPosition const& o) {
    return *this = *this - o;
}
bool GwPosition::operator==(GwPosition const& o) const {
    return mX == o.mX && mY == o.mY;
}
bool GwPosition::operator!=(GwPosition const& o) const {
    return mX != o.mX || mY != o.mY;
}
bool GwPosition::operator<(GwPosition const& o) const {
    return mX < o.mX && mY < o.mY;
}
GwPosition GwPosition::maximum(GwPosition const& o) const {
    return GwPosition(std::max(mX, o.mX), std::max(mY, o.mY));
}

GwDimension GwDimension::operator+(GwDimension const& o) const {
    return GwDimension(mWidth + o.mWidth, mHeight + o.mHeight);
}
GwDimension GwDimension::operator-(GwDimension const& o) const {
    return GwDimension(mWidth - o.mWidth, mHeight - o.mHeight);
}
GwDimension& GwDimension::operator+=(GwDimension const& o) {
    return *this = *this + o;
}
GwDimension& GwDimension::operator-=(GwDimension const& o) {
    return *this = *this - o;
}
bool GwDimension::operator==(GwDimension const& o) const {
    return mWidth == o.mWidth && mHeight == o.mHeight;
}
bool GwDimension::operator!=(GwDimension const& o) const {
    return mWidth != o.mWidth || mHeight != o.mHeight;
}
bool GwDimension::operator<(GwDimension const& o) const {
    return mWidth < o.mWidth && mHeight < o.mHeight;
}
GwDimension GwDimension::maximum(GwDimension const& o) const {
    return GwDimension(std::max(mWidth, o.mWidth), std::max(mHeight, o.mHeight));
}

GwRectangle& GwRectangle::operator=(GwPosition const& position) {
    mX = position.x();
    mY = position.y();
    return *this;
}
GwRectangle& GwRectangle::operator=(GwDimension const& dimension) {
    mWidth = dimension.width();
    mHeight = dimension.height();
    return *this;
}
GwRectangle GwRectangle::operator+(GwRectangle const& o) const {
    return GwRectangle(mX + o.mX, mY + o.mY, mWidth + o.mWidth, mHeight + o.mHeight);
}
GwRectangle GwRectangle::operator-(GwRectangle const& o) const {
    return GwRectangle(mX - o.mX, mY - o.mY, mWidth - o.mWidth, mHeight - o.mHeight);
}
GwRectangle& GwRectangle::operator+=(GwRectangle const& o) {
    return *this = *this + o;
}
GwRectangle& GwRectangle::operator-=(GwRectangle const& o) {
    return *this = *this - o;
}
bool GwRectangle::operator==(GwRectangle const& o) const {
    return mX == o.mX && mY == o.mY && mWidth == o.mWidth && mHeight == o.mHeight;
}
