// A host that draws and has no graph: what can't be written is told in the log all the same.
#include <MelkarCommon/MelkarCommon.h>

int main() {
    HDC picture = CreateMemorySurface(8, 8);
    const int result = WritePng(picture, "nowhere/picture.png");
    DeleteDC(picture);
    return result == -1 ? 0 : 1;
}
