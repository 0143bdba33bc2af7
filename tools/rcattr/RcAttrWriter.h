// rcattr's work without any file or platform: the readable text form of attribute data,
// its bytes, and the resource script that carries them.
//
// Text form, one statement a line; '#' starts a comment outside quotes:
//     attributes 1000        resource identifier (1 to 65535) of the dialog or menu
//     dialog                 entry 0xFFFF, the dialog or menu itself ("menu" alone too)
//     control 1001           entry of a control (0 to 65534)
//     menu 2                 entry 0x8000 + 2, the popup at position 2 (0 to 32766)
//     entry 0x1234           entry with any identifier (0 to 65535)
//     Class = "GwPushButton" text item: quoted, escapes \" \\ \n \r \t \xHH
//     HelpId = 300           number item, stored as 16 bits (0 to 65535, decimal or 0x..)
// A key is a name (letters, digits, '_', not beginning with a digit) or a quoted text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "GwRcDataParser.h"
#include "RcScript.h"

struct RcAttrEntry {
    GwRcDataRecord record;
    // How the text named it ("control 1001"), for comments in the script.
    std::string label;
    int line = 0;
};

struct RcAttrResource {
    unsigned id = 0;
    int line = 0;
    std::vector<RcAttrEntry> entries;
};

using RcAttrMessage = RcMessage;

// The bytes of the entries with their end mark. False, with the reason in error, when the
// bytes would not read back as the same entries: entry 0 without items (its bytes are the
// end mark), a 0 byte in a key or value, an empty key with an empty or number value, an
// empty text value that no item with a non-empty key follows, or a number item whose value
// is not the decimal text of a 16-bit number.
bool rcAttrEncode(std::vector<GwRcDataRecord> const& entries, std::string& bytes,
                  std::string& error);

// Reads the text form. Warnings (repeated entry identifiers or keys, which lookups skip)
// and at most one error go to messages; false after an error.
bool rcAttrRead(std::string const& text, std::vector<RcAttrResource>& resources,
                std::vector<RcAttrMessage>& messages);

// A resource script with one RCDATA resource per block, its bytes written as quoted strings
// with octal escapes (byte-exact for windres and rc). source names the input in a comment.
// False, with the reason in error, when a block cannot be encoded.
bool rcAttrScript(std::vector<RcAttrResource> const& resources, std::string const& source,
                  std::string& script, std::string& error);
