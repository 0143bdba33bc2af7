// Positions, sizes and rectangles in window coordinates (signed 32-bit on Windows).
#pragma once

#include "GwExport.h"

class VMGUI_API GwPosition {
public:
    GwPosition() : mX(0), mY(0) {}
    GwPosition(long x, long y) : mX(x), mY(y) {}

    long x() const { return mX; }
    long y() const { return mY; }
    GwPosition& setX(long x) {
        mX = x;
        return *this;
    }
    GwPosition& setY(long y) {
        mY = y;
        return *this;
    }

    GwPosition operator+(GwPosition const& other) const;
    GwPosition operator-(GwPosition const& other) const;
    GwPosition& operator+=(GwPosition const& other);
    GwPosition& operator-=(GwPosition const& other);
    bool operator==(GwPosition const& other) const;
    bool operator!=(GwPosition const& other) const;
    // True only when both components are strictly less: a partial order, so two different
    // values may compare neither way.
    bool operator<(GwPosition const& other) const;
    // The componentwise maximum.
    GwPosition maximum(GwPosition const& other) const;

private:
    long mX;
    long mY;
};

class VMGUI_API GwDimension {
public:
    GwDimension() : mWidth(0), mHeight(0) {}
    GwDimension(long width, long height) : mWidth(width), mHeight(height) {}

    long width() const { return mWidth; }
    long height() const { return mHeight; }
    GwDimension& setWidth(long width) {
        mWidth = width;
        return *this;
    }
    GwDimension& setHeight(long height) {
        mHeight = height;
        return *this;
    }

    GwDimension operator+(GwDimension const& other) const;
    GwDimension operator-(GwDimension const& other) const;
    GwDimension& operator+=(GwDimension const& other);
    GwDimension& operator-=(GwDimension const& other);
    bool operator==(GwDimension const& other) const;
    bool operator!=(GwDimension const& other) const;
    // True only when both components are strictly less (a partial order).
    bool operator<(GwDimension const& other) const;
    GwDimension maximum(GwDimension const& other) const;

private:
    long mWidth;
    long mHeight;
};

// Position (bottom-left corner in the library's bottom-up coordinates) and size.
class VMGUI_API GwRectangle {
public:
    GwRectangle() : mX(0), mY(0), mWidth(0), mHeight(0) {}
    GwRectangle(long x, long y, long width, long height)
        : mX(x), mY(y), mWidth(width), mHeight(height) {}
    GwRectangle(GwPosition const& position, GwDimension const& dimension)
        : mX(position.x()), mY(position.y()), mWidth(dimension.width()),
          mHeight(dimension.height()) {}

    long x() const { return mX; }
    long y() const { return mY; }
    long width() const { return mWidth; }
    long height() const { return mHeight; }

    // Replace only the position, or only the size.
    GwRectangle& operator=(GwPosition const& position);
    GwRectangle& operator=(GwDimension const& dimension);

    // Componentwise over all four fields; neither a union nor an intersection.
    GwRectangle operator+(GwRectangle const& other) const;
    GwRectangle operator-(GwRectangle const& other) const;
    GwRectangle& operator+=(GwRectangle const& other);
    GwRectangle& operator-=(GwRectangle const& other);
    bool operator==(GwRectangle const& other) const;
    bool operator!=(GwRectangle const& other) const { return !(*this == other); }

    GwPosition position() const { return GwPosition(mX, mY); }
    GwDimension dimension() const { return GwDimension(mWidth, mHeight); }

private:
    long mX;
    long mY;
    long mWidth;
    long mHeight;
};
