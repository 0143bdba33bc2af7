// Uses the installed library: finds classes by name, makes an item and compares values.
#include <VmGui.h>

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
    return area == GwRectangle(2, 3, 11, 21) ? 0 : 1;
}
