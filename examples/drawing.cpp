// Draws into a bitmap by command and through its link, fills a vertex map both ways and builds a mesh from it; then
// writes the same scene with an offline buffer into a command file, which `zant run` accepts.
//
// usage: drawing ENGINE_DIRECTORY [COMMAND_FILE]      (the directory with its final separator)

#include <cstdio>
#include <fstream>
#include <iostream>

#include "client/zant.h"

using namespace Zant;

namespace {

constexpr int width = 24;
constexpr int height = 10;

/// Writes each command on a line of a file. Without an instance there is nothing to link to.
class FileBuffer : public CommandOfflineBuffer {
public:
    explicit FileBuffer(const char* name) : file(name) {}

private:
    void parseOffline(const char* command) override { file << command << '\n'; }
    std::ofstream file;
};

/// One pixel: in the engine's own memory where there is a link, by command otherwise.
void setPixel(BitmapSymbol& picture, int x, int y, const Vector& colour) {
    if (picture.bitmap.data) {
        picture.bitmap.setPixel(x, y, colour);
    } else {
        picture.setPixel(x, y, colour);
    }
}

/// Shapes by command, a diagonal pixel by pixel.
void draw(void* p, BitmapSymbol& picture) {
    bitmapOp2_clear(p, picture, Vector(0, 0, 0.25));
    bitmapOp4_circle(p, picture, Vector(12, 5), 4, Vector(1, 0.5, 0));
    bitmapOp4_line(p, picture, Vector(0, 9), Vector(23, 9), Vector(1, 1, 1));
    picture.refreshDirectLink();
    for (int i = 0; i < height; ++i)
        setPixel(picture, 2 * i, i, Vector(0, 1, 0));
}

/// The corners of a square: two rows by command, two through the link where there is one.
void fill(VertexMapSymbol& corners) {
    const double positions[4][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    corners.registerSymbol(3, 4, 1);
    for (size_t row = 0; row < 4; ++row) {
        const double* const position = positions[row];
        if (corners.direct() && row % 2 == 1) {
            corners.direct()->setRow(row, position, 0);
        } else {
            corners.data(row, Vector(position[0], position[1], position[2]));
        }
    }
}

void buildMesh(MeshSymbol& panel, const VertexMapSymbol& corners) {
    panel.registerSymbol();
    panel.points(corners);
    const Double polygon[] = {{0}, {1}, {2}, {3}};
    panel.addPoly(0, polygon, 1, 0);
}

/// The picture as characters, read through the link.
void show(const Bitmap& bitmap) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Vector colour;
            bitmap.getPixel(x, y, colour);
            const double red = colour.values[0];
            const double green = colour.values[1];
            std::putchar(red == 1 && green == 1 ? '=' : red > 0.5 ? 'o' : green > 0.5 ? '\\' : '.');
        }
        std::putchar('\n');
    }
}

void buildScene(Prototyper& proto) {
    BitmapSymbol picture(*proto.buffer, width, height, PixelCharRgba, "picture");
    draw(proto.protos(), picture);
    VertexMapSymbol corners(*proto.buffer, "corners");
    fill(corners);
    MeshSymbol panel(*proto.buffer, "panel");
    buildMesh(panel, corners);
    if (picture.bitmap.data) show(picture.bitmap);
    showInfo0_vertexMaps(proto.protos());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: drawing ENGINE_DIRECTORY [COMMAND_FILE]\n";
        return 2;
    }
    Library library(argv[1]);
    Instance* instance = library.createInstance();
    if (!instance) {
        std::cerr << "drawing: no engine: " << library.getLoadError() << "\n";
        return 3;
    }
    {
        Prototyper proto(instance);
        buildScene(proto);
    }
    library.releaseInstance(instance);
    if (argc > 2) {
        Prototyper offline(new FileBuffer(argv[2]));
        buildScene(offline);
    }
    return 0;
}
