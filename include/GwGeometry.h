// Positions, sizes and rectangles in window coordinates (signed 32-bit on Windows).
#pragma once

#include "GwExport.h"

// A point: x to the right, y upwards in the library's window coordinates.
class VMGUI_API GwPosition {
public:
    // The origin, or the point (x, y).
    GwPosition() : mX(0), mY(0) {}
    GwPosition(long x, long y) : mX(x), mY(y) {}

    // The coordinates, read and replaced one at a time.
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

    // Componentwise sum and difference; equal when both coordinates are.
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

// A size: width and height (negative values are kept as given).
class VMGUI_API GwDimension {
public:
    // The empty size, or width by height.
    GwDimension() : mWidth(0), mHeight(0) {}
    GwDimension(long width, long height) : mWidth(width), mHeight(height) {}

    // The components, read and replaced one at a time.
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

    // Componentwise sum and difference; equal when both components are.
    GwDimension operator+(GwDimension const& other) const;
    GwDimension operator-(GwDimension const& other) const;
    GwDimension& operator+=(GwDimension const& other);
    GwDimension& operator-=(GwDimension const& other);
    bool operator==(GwDimension const& other) const;
    bool operator!=(GwDimension const& other) const;
    // True only when both components are strictly less (a partial order).
    bool operator<(GwDimension const& other) const;
    // The componentwise maximum.
    GwDimension maximum(GwDimension const& other) const;

private:
    long mWidth;
    long mHeight;
};

// Position (bottom-left corner in the library's bottom-up coordinates) and size.
class VMGUI_API GwRectangle {
public:
    // The empty rectangle at the origin, or one from its four values or its two parts.
    GwRectangle() : mX(0), mY(0), mWidth(0), mHeight(0) {}
    GwRectangle(long x, long y, long width, long height)
        : mX(x), mY(y), mWidth(width), mHeight(height) {}
    GwRectangle(GwPosition const& position, GwDimension const& dimension)
        : mX(position.x()), mY(position.y()), mWidth(dimension.width()),
          mHeight(dimension.height()) {}

    // The four values.
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

    // The corner and the size as values of their own.
    GwPosition position() const { return GwPosition(mX, mY); }
    GwDimension dimension() const { return GwDimension(mWidth, mHeight); }

private:
    long mX;
    long mY;
    long mWidth;
    long mHeight;
};
