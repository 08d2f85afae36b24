// Writes the swatches that ship, from the built-in table:
//   g++ -std=c++20 -Isrc assets/swatches/MakeSwatches.cpp -o make-swatches
//   ./make-swatches "install/Swatch Libraries/Default.pal"
#include "resources/SwatchTable.h"

#include <cstdio>

int main(int argc, char** argv)
{
    std::FILE* pFile = argc == 2 ? std::fopen(argv[1], "wb") : nullptr;
    if (!pFile) {
        std::fprintf(stderr, "usage: make-swatches FILE\n");
        return 2;
    }
    bool bOk = true;
    for (kestrune::COLORREF cr : kestrune::c_aBuiltInSwatches) {
        const unsigned char aBytes[4] = {kestrune::RedOf(cr), kestrune::GreenOf(cr), kestrune::BlueOf(cr), 0};
        bOk = std::fwrite(aBytes, 1, 4, pFile) == 4 && bOk;
    }
    bOk = std::fclose(pFile) == 0 && bOk;
    return bOk ? 0 : 1;
}
