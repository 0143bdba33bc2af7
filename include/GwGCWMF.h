// A graphics context that records its drawing into an enhanced metafile.
#pragma once

#include <String.h>

#include "GwGC.h"

// A graphics context that records a metafile, to play it, put it on the clipboard or write it
// to a file.
//
// Draws like a GwGC, in the same upward coordinates, into an enhanced metafile in memory:
// the recording device's y axis points down, so every drawing operation turns the library's
// y into height - y (the dimension's height). The recording can be played into another
// context, put on the clipboard, or written to the named file when the context is destroyed:
// as an enhanced metafile, or as a Windows metafile with or without the 22-byte placeable
// header. A file of any of the three kinds can be loaded for playback; the kind is told by
// content, and a file that is truncated or whose header lies leaves the context without a
// metafile.
//
// Copies share the metafile handle; the last copy deletes it.
class VMGUI_API GwGCWMF : public GwGC {
    GW_DECLARE_CLASS(GwGCWMF)

public:
    // file may be null (a context that never touches a file). placeable applies only to a
    // Windows metafile (enhanced false).
    explicit GwGCWMF(char const* file = nullptr, bool enhanced = true, bool placeable = false);
    // Takes the file, the flags and the frame, and shares the held metafile.
    GwGCWMF(GwGCWMF const& other);
    GwGCWMF& operator=(GwGCWMF const& other);
    // Ends a recording, writes the file when the recording was modified and a file is
    // named, and deletes the metafile.
    ~GwGCWMF() override;

    // Where play puts the picture, in the target's coordinates.
    GwGCWMF& setPosition(long x, long y);
    // The size of the drawing in pixels: the recording's frame and the base of the y flip.
    GwGCWMF& setDimension(int width, int height);

    // Starts a new recording (an old recording or metafile is dropped).
    GwGCWMF& record();
    // Ends a recording in progress, or loads the named file when no metafile is held, and
    // plays the metafile into target's device at the position, in the dimension. A width or
    // height of 0 follows the picture's aspect ratio from its frame.
    GwGCWMF& play(GwGC& target);
    // Ends a recording in progress and hands the metafile to the clipboard as
    // CF_ENHMETAFILE. The context holds no metafile afterwards: a second call hands over a
    // null handle.
    GwGCWMF& setClipboard();
    // Loads the named Windows metafile and renames it to an enhanced one (".wmf" becomes
    // ".emf"), which is written when the context is destroyed.
    GwGCWMF& convertWmfToEmf();

    // The height is made positive: the recording device's y axis points down.
    GwDimension calcText(String const& text) override;
    // As GwGC's, with the escapement in tenths of a degree as it stands for an enhanced
    // metafile and mirrored (3600 - tenths) for a Windows metafile, below 3600.
    GwGC& setFont(String const& face, int size, double angle = 0.0) override;

    // How the context was made (enhanced or Windows metafile, placeable), whether the
    // recording is still to be written to the file, the file's name, and the frame given to
    // record.
    bool enhanced() const { return (mFileFlags & kEnhanced) != 0; }
    bool placeable() const { return (mFileFlags & kPlaceable) != 0; }
    bool modified() const { return (mFileFlags & kModified) != 0; }
    String const& fileName() const { return mFileName; }
    GwPosition position() const { return GwPosition(mX, mY); }
    GwDimension dimension() const { return GwDimension(mWidth, mHeight); }
    // The finished or loaded metafile (HENHMETAFILE), null while none is held.
    void* metafile() const;
    // Whether a recording is in progress.
    bool recording() const { return mDevice != nullptr; }

    // A context recording an enhanced metafile in memory.
    static GwGCWMF* newInstance(EventData const* data);

private:
    enum : unsigned int { kEnhanced = 1, kPlaceable = 2, kModified = 4 };
    struct Shared;

    // Closes the recording device and keeps its metafile.
    void endRecording();
    // Replaces the held metafile (null: none); with the share count of the copies.
    void setMetafile(void* metafile);
    void loadMetaFile();
    void saveMetaFile();

    unsigned int mFileFlags;
    String mFileName;
    long mX;
    long mY;
    long mWidth;
    long mHeight;
    Shared* mMetafile;
};
