// Uses the installed library: finds classes by name, makes an item and compares values, and
// finds the tool-bar resource that the installed rctoolbar wrote into its resources.
#include <VmGui.h>

#include <windows.h>

#include <cstdio>

int main() {
    Class const* record = Class::lookup("GwTextItem");
    if (record == nullptr || !record->isSubclassOf(Class::lookup("GwObject"))) {
        std::puts("consumer: GwTextItem is not registered");
        return 1;
    }
    GwTextItem item(7, "Datei");
    GwRectangle area = GwRectangle(1, 2, 10, 20) + GwRectangle(1, 1, 1, 1);
    std::printf("consumer: %s %llu \"%s\", rectangle %ld %ld %ld %ld\n", Class::name(item.isA()),
                item.id(), item.text().c_str(), area.x(), area.y(), area.width(), area.height());
    // Tool bar 100: four header words and three entries.
    HRSRC toolBar = FindResourceA(nullptr, MAKEINTRESOURCEA(100), MAKEINTRESOURCEA(241));
    DWORD const size = toolBar != nullptr ? SizeofResource(nullptr, toolBar) : 0;
    std::printf("consumer: tool-bar resource 100 of %lu bytes\n", size);
    return area == GwRectangle(2, 3, 11, 21) && size == 14 ? 0 : 1;
}
