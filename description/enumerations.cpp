#include "description/description.h"

namespace Zant::Description {

#define VALUE(name)    \
    EnumerationValue { \
#name, name    \
    }

std::vector<Enumeration> enumerations() {
    return {
        {"_ZantHandleType",
         {VALUE(HandleVertexMap), VALUE(HandleBitmap), VALUE(HandleMesh), VALUE(HandleValue), VALUE(HandleObject)}},
        {"ZantValueCode",
         {VALUE(ZantValueString), VALUE(ZantValueNumber), VALUE(ZantValueVector), VALUE(ZantValueCoordSys),
          VALUE(ZantValueAxes), VALUE(ZantValueText)}},
        {"_ZantPixelFormat",
         {VALUE(PixelFloatGray), VALUE(PixelFloatRgb), VALUE(PixelFloatRgbx), VALUE(PixelFloatRgba),
          VALUE(PixelCharGray), VALUE(PixelCharRgba), VALUE(PixelBitPlane)}},
        {"_ZantEventKind",
         {VALUE(EventSetPixels), VALUE(EventCopyPixels), VALUE(EventCreateTextStream), VALUE(EventDestroyTextStream),
          VALUE(EventTextLine), VALUE(EventTextNewLine), VALUE(EventGetTextLine), VALUE(EventGetTextFlags),
          VALUE(EventCreateWindow), VALUE(EventDestroyWindow), VALUE(EventSetWindowSize), VALUE(EventSetWindowTitle),
          VALUE(EventSetWindowFlags), VALUE(EventGetWindowFlags), VALUE(EventGetMousePosition),
          VALUE(EventGetMouseRawPosition), VALUE(EventGetKey), VALUE(EventAllocTextBuffer),
          VALUE(EventFreeTextBuffer)}},
    };
}

std::vector<Enumeration> engineEnumerations() {
    return {
        {"ParseMode", {VALUE(ParseText), VALUE(ParseQuickText), VALUE(ParseBinary)}},
        {"LibraryFlags", {VALUE(AUTO_UNLOAD), VALUE(RELEASING)}},
    };
}

}  // namespace Zant::Description
