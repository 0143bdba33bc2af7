// The common dialog for choosing a colour.
#pragma once

#include "GwDialog.h"

// The colour dialog of the platform.
//
// Shows ChooseColorA modally from setVisible, whatever its argument, owned by a frame and
// starting with the colour set; makes no window of its own. result() is non-zero when the
// user confirmed; a cancelled dialog leaves result() 0 and the colour as it was. The sixteen
// custom colours of the dialog (white at first) are kept from one showing to the next.
//
// Colours are 0x00RRGGBB, red in bits 16 to 23; the top byte of a colour set is ignored.
class VMGUI_API GwColorSelect : public GwDialog {
    GW_DECLARE_CLASS(GwColorSelect)

public:
    // A colour dialog owned by a frame, starting with a colour given by its parts or as
    // 0x00RRGGBB.
    GwColorSelect(GwFrame& owner, unsigned char r, unsigned char g, unsigned char b);
    GwColorSelect(GwFrame& owner, unsigned long colour);
    // Copies the colour, the custom colours, the owner and the result.
    GwColorSelect(GwColorSelect const& other);
    GwColorSelect& operator=(GwColorSelect const& other);
    ~GwColorSelect() override;

    // Shows the dialog; the window active before is made active again afterwards.
    GwColorSelect& setVisible(bool visible) override;

    // The colour (0x00RRGGBB, or its parts); the chosen one after a confirmed showing.
    unsigned long color() const;
    void color(unsigned char& r, unsigned char& g, unsigned char& b) const;
    GwColorSelect& setColor(unsigned long colour);
    GwColorSelect& setColor(unsigned char r, unsigned char g, unsigned char b);

    // Copies the 16 custom colours out / in; a null pointer does nothing.
    void customColors(unsigned long* const colours) const;
    GwColorSelect& setCustomColors(unsigned long* const colours);

    // The frame that owns the dialog.
    GwFrame* owner() const { return mOwner; }

    // Null: a colour dialog needs its frame.
    static GwColorSelect* newInstance(EventData const* data);

private:
    struct Record; // the CHOOSECOLORA with its custom colours
    Record* mRecord;
    GwFrame* mOwner; // not owned
};
