// Commands that make pictures and show them, and those that wait for the user or end a script.

#include <algorithm>
#include <chrono>
#include <thread>

#include "engines/scene/execution.h"
#include "engines/scene/viewsettings.h"
#include "engines/scene/world.h"

namespace Zant::Engine {
namespace {

constexpr double longestPause = 60;  // seconds

// One form of a word, by its keyword.
struct FormRow {
    const char* keyword;
    Handler handler;
};

template <size_t count>
Outcome carryOutForm(const FormRow (&rows)[count], Execution& execution) {
    for (const FormRow& row : rows) {
        if (execution.isKeyword(0, row.keyword)) return row.handler(execution);
    }
    execution.hasEffect = execution.isPictured = false;
    return {};
}

using ModelPointer = std::shared_ptr<const Model>;

/// A picture of the scene as it is now, which is left to be made.
struct Request {
    Pictures& pictures;
    const Profile& profile;
    ModelPointer model;
    std::string file;      ///< that it is written to; empty for none
    std::string notShown;  ///< a line about what it does not show; empty for none
};

// The first picture of an instance says what it could not show, where there are pictures to see.
std::string whatIsNotShown(Execution& execution, Omissions omissions) {
    World& world = execution.world;
    if (world.hasToldOmissions || !execution.profile.createTracer) return {};
    world.hasToldOmissions = true;
    for (const auto& [what, count] : world.omissions)
        omissions[what] += count;
    std::string line;
    for (const auto& [what, count] : omissions)
        line += (line.empty() ? "Not shown: " : ", ") + what + " " + std::to_string(count);
    return line;
}

enum class Size { View, Preview };

// What can be refused before the picture is begun is.
Outcome leavePicture(Execution& execution, Size size, Outcome (*begin)(const Request&, TextOutput&)) {
    Omissions omissions;
    const ModelPointer model = modelOf(execution.world, execution.objects, size == Size::Preview, omissions);
    Outcome outcome = execution.pictures.check(model->width, model->height);
    if (outcome.code != Fine && !execution.isKeyword(0, "restart")) return outcome;  // that one ends what goes on
    const Request request{execution.pictures, execution.profile, model, execution.world.output,
                          whatIsNotShown(execution, std::move(omissions))};
    execution.afterwards = [request, begin](TextOutput& text) {
        Outcome made = begin(request, text);
        if (made.code == Fine && !request.notShown.empty()) text.say(request.notShown);
        return made;
    };
    return {};
}

Outcome write(const Profile& profile, const Picture* picture, const std::string& file) {
    if (!picture) return {BadValue, "there is no picture yet: render makes one"};
    const std::string fault = profile.writePicture(*picture, file);
    return fault.empty() ? Outcome{} : Outcome{NoFile, fault};
}

Outcome render(Execution& execution) {
    return leavePicture(execution, Size::View, [](const Request& request, TextOutput& text) {
        Lines lines;
        Outcome outcome = request.pictures.render(request.model, lines);
        text.say(lines);
        if (outcome.code != Fine || request.file.empty()) return outcome;
        return write(request.profile, request.pictures.rendered().get(), request.file);
    });
}

Outcome startPreview(Execution& execution) {
    return leavePicture(execution, Size::Preview,
                        [](const Request& request, TextOutput&) { return request.pictures.start(request.model); });
}

Outcome restartPreview(Execution& execution) {
    return leavePicture(execution, Size::Preview,
                        [](const Request& request, TextOutput&) { return request.pictures.restart(request.model); });
}

// At the place of the file's name; the format may follow it.
Outcome save(Execution& execution, size_t file) {
    execution.hasEffect = execution.isPictured = execution.profile.writePicture != nullptr;
    if (!execution.hasEffect) return {};
    Outcome outcome = checkFormat(execution, file + 1);
    if (outcome.code != Fine) return outcome;
    return write(execution.profile, execution.pictures.rendered().get(), execution.text(file));
}

Outcome stopPreview(Execution& execution) {
    execution.afterwards = [&pictures = execution.pictures](TextOutput&) {
        pictures.stop();
        return Outcome{};
    };
    return {};
}

// The size is the second vector, the first one a place on the screen, which listeners are not told.
Outcome openWindow(Execution& execution) {
    Omissions ignored;
    const ModelPointer model = modelOf(execution.world, execution.objects, false, ignored);
    int width = model->width;
    int height = model->height;
    if (execution.has(2)) {
        const Vector& size = execution.vector(2);
        if (size.count < 2) return {BadValue, "a size needs two components", 2};
        width = Pixels::sideOf(size.values[0]);
        height = Pixels::sideOf(size.values[1]);
    }
    Outcome outcome = execution.pictures.check(width, height);
    if (outcome.code != Fine) return outcome;
    execution.afterwards = [&pictures = execution.pictures, width, height](TextOutput&) {
        return pictures.openWindow(width, height);
    };
    return {};
}

Outcome closeWindow(Execution& execution) {
    execution.afterwards = [&pictures = execution.pictures](TextOutput&) {
        pictures.closeWindow();
        return Outcome{};
    };
    return {};
}

Outcome freeRenderedImage(Execution& execution) {
    execution.pictures.freeRendered();
    return {};
}

Outcome view(Execution& execution) {
    static constexpr FormRow rows[] = {
        {"render", render}, {"window", openWindow}, {"close", closeWindow}, {"freeRenderedImage", freeRenderedImage}};
    if (execution.isKeyword(0, "save")) return save(execution, 1);
    if (execution.isKeyword(0, "postProcess") && execution.isKeyword(1, "saveImage")) return save(execution, 2);
    if (execution.isKeyword(0, "size") || execution.isKeyword(0, "camAspect")) return setView(execution);
    return carryOutForm(rows, execution);
}

Outcome preview(Execution& execution) {
    static constexpr FormRow rows[] = {
        {"start", startPreview}, {"stop", stopPreview}, {"restart", restartPreview}, {"render", render}};
    return carryOutForm(rows, execution);
}

Outcome setThreads(Execution& execution) {
    execution.pictures.setThreads(static_cast<int>(execution.number(0)));
    return {};
}

// A number that is none is no pause.
Outcome pauseScript(Execution& execution) {
    if (!execution.has(0)) {
        execution.afterwards = [](TextOutput& text) {
            std::string ignored;
            text.ask("Paused: a line goes on", ignored);
            return Outcome{};
        };
        return {};
    }
    const double seconds = execution.number(0) > 0 ? std::min(execution.number(0), longestPause) : 0;
    execution.afterwards = [seconds](TextOutput&) {
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        return Outcome{};
    };
    return {};
}

Outcome readInput(Execution& execution) {
    execution.nested = Nested::Input;
    execution.nestedText = "> ";
    execution.nestedSource = "input";
    return {};
}

Outcome endText(Execution& execution) {
    execution.ending = Ending::Text;
    return {};
}

Outcome endAll(Execution& execution) {
    execution.ending = Ending::All;
    return {};
}

// Components are taken as they are: a bitmap does not say whether they are linear.
std::shared_ptr<const Picture> pictureOf(const Bitmap& bitmap) {
    const auto picture = std::make_shared<Picture>(bitmap.width, bitmap.height);
    const Bitmap target(picture->pixels.data(), bitmap.width, bitmap.height, PixelFloatRgba);
    bitmap.copyTo(&target, bitmap.width, bitmap.height);
    return picture;
}

}  // namespace

Outcome showBitmap(Execution& execution) {
    const Pixels& pixels = execution.pixels(0);
    if (!pixels.hasAccess()) return {BadValue, "the bitmap has no pixels to show", 0};
    const Bitmap& bitmap = pixels.bitmap();
    Outcome outcome = execution.pictures.check(bitmap.width, bitmap.height);
    if (outcome.code != Fine) return outcome;
    execution.afterwards = [&pictures = execution.pictures, picture = pictureOf(bitmap),
                            title = std::string(execution.profile.name) + ": " + execution.text(0)](TextOutput&) {
        return pictures.show(*picture, title);
    };
    return {};
}

const HandlerRow renderHandlers[] = {
    {"render", render}, {"view", view},   {"pv", preview},  {"threads", setThreads},    {"pause", pauseScript},
    {"stop", endText},  {"end", endText}, {"exit", endAll}, {"interactive", readInput}, {nullptr, nullptr},
};

}  // namespace Zant::Engine
