// Writes pictures of every control in every look, at one, one and a half and two pixels to the point.
//
//     picture_sheet DIR

#include "Scenes.h"
#include "SheetView.h"

#include <platform/appkit/NSApplication.h>
#include <platform/graphics/NSImage.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{

struct Scale {
    double pixelsPerPoint;
    const char* suffix;
};
constexpr std::array kScales{Scale{1.0, ""}, Scale{1.5, "@1.5x"}, Scale{2.0, "@2x"}};

bool writeSheet(const Scene& scene, const std::filesystem::path& folder)
{
    const Ref<SheetView> sheet = make<SheetView>()->initWithLooks(scene.looks);
    for (const Scale& scale : kScales) {
        const std::string file = (folder / (scene.control + std::string(scale.suffix) + ".png")).string();
        const Ref<NSImage> picture = sheet->imageOfBounds(scale.pixelsPerPoint);
        if (!picture || !picture->writePNGToFile(file)) {
            std::fprintf(stderr, "%s cannot be written\n", file.c_str());
            return false;
        }
        std::printf("%s\n", file.c_str());
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: picture_sheet DIR\n");
        return EXIT_FAILURE;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code error; // shows when a file cannot be written
    std::filesystem::create_directories(folder, error);
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    for (const Scene& scene : scenes()) {
        if (!writeSheet(scene, folder)) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
