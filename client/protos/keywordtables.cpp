#include <iterator>

#include "client/keywords/enums.h"
#include "client/protos/forms.h"

namespace Zant {
namespace {

template <size_t slots>
constexpr KeywordTable table(const char* name, const char* const (&words)[slots]) {
    return {name, words, static_cast<int>(slots)};
}

#define ZANT_TABLE(name) table(#name, Enums::name)

// The table of command words comes first, the others in the order of enums.h; a form names a table by its index here.
const KeywordTable tables[] = {
    ZANT_TABLE(cmd_strings),
    ZANT_TABLE(groupOps_strings),
    ZANT_TABLE(groupLinkTypes_strings),
    ZANT_TABLE(renderModes_strings),
    ZANT_TABLE(aaMode_strings),
    ZANT_TABLE(aaModeOld_strings),
    ZANT_TABLE(autoPhoton_strings),
    ZANT_TABLE(background_strings),
    ZANT_TABLE(bitmaps_strings),
    ZANT_TABLE(outputChannels_strings),
    ZANT_TABLE(blend_strings),
    ZANT_TABLE(camera_strings),
    ZANT_TABLE(dither_strings),
    ZANT_TABLE(environment_strings),
    ZANT_TABLE(fiberpackParams_strings),
    ZANT_TABLE(infos_strings),
    ZANT_TABLE(settings_strings),
    ZANT_TABLE(instanceTransformer_strings),
    ZANT_TABLE(fileCommands_strings),
    ZANT_TABLE(toneMapSet_strings),
    ZANT_TABLE(light_strings),
    ZANT_TABLE(lightOps_strings),
    ZANT_TABLE(materialAttrib_strings),
    ZANT_TABLE(materialTexture_strings),
    ZANT_TABLE(mapping_strings),
    ZANT_TABLE(meshTag_strings),
    ZANT_TABLE(meshExport_strings),
    ZANT_TABLE(meshOperations_strings),
    ZANT_TABLE(meshVertexmapGrab_strings),
    ZANT_TABLE(metatextureAttrib_strings),
    ZANT_TABLE(metatextureMapping_strings),
    ZANT_TABLE(outputFormats_strings),
    ZANT_TABLE(objectSet_strings),
    ZANT_TABLE(miscSharedObjects_strings),
    ZANT_TABLE(miscSharedObjectOpetarions_strings),
    ZANT_TABLE(pixelFilter_strings),
    ZANT_TABLE(postProcessor_strings),
    ZANT_TABLE(pixelServer_strings),
    ZANT_TABLE(surface_strings),
    ZANT_TABLE(shape_strings),
    ZANT_TABLE(screenSplit_strings),
    ZANT_TABLE(toneMapper_strings),
    ZANT_TABLE(Texture_strings),
    ZANT_TABLE(ztoneMapper_strings),
    ZANT_TABLE(datatype_strings),
    ZANT_TABLE(instanceAddAttribs_strings),
    ZANT_TABLE(rayCast_strings),
    ZANT_TABLE(previewCmds_strings),
    ZANT_TABLE(octreeCmds_strings),
    ZANT_TABLE(shapeSelectionOps_strings),
    ZANT_TABLE(portalOps_strings),
    ZANT_TABLE(portalTypes_strings),
    ZANT_TABLE(openClCmds_strings),
    ZANT_TABLE(gpGpuCmds_strings),
    ZANT_TABLE(meshInitializers_strings),
    ZANT_TABLE(materialInitializers_strings),
    ZANT_TABLE(shaderNodes_strings),
    ZANT_TABLE(surfaceOperations_strings),
    ZANT_TABLE(bitmapOp_strings),
    ZANT_TABLE(phySkyLights_strings),
    ZANT_TABLE(net_strings),
    ZANT_TABLE(platform_strings),
    ZANT_TABLE(view_strings),
    ZANT_TABLE(photonMap_strings),
    ZANT_TABLE(finalGather_strings),
    ZANT_TABLE(lightOptions_strings),
    ZANT_TABLE(lightWaveMeshOptions_strings),
    ZANT_TABLE(lightWave_strings),
    ZANT_TABLE(treeds_strings),
    ZANT_TABLE(meshOptions_strings),
    ZANT_TABLE(animOperations_strings),
    ZANT_TABLE(animObjectAttributesSet_strings),
    ZANT_TABLE(vertexMapTypes_strings),
    ZANT_TABLE(vertexMapOps_strings),
    ZANT_TABLE(memCmds_strings),
    ZANT_TABLE(renderInfosStringFormat_strings),
};

#undef ZANT_TABLE

}  // namespace

FormRange<KeywordTable> keywordTables() {
    return {tables, std::size(tables)};
}

}  // namespace Zant
