#ifndef ZANT_CLIENT_KEYWORDS_ENUMS_H
#define ZANT_CLIENT_KEYWORDS_ENUMS_H

#include "own/cxx17.h"

/// The keywords of the command language: spelling and number of each.
///
/// Keyword number n of a table stands in slot n - 1; number 0 is never a keyword. A null slot is a number without a
/// keyword: no command sends it, and the numbers after it do not close up. Spellings are case-sensitive and go to the
/// engine exactly as they stand. A number means something only together with its table, that is, with its place in the
/// command: each table says which keywords it follows (arguments between them left out).
///
/// The tables are constant data that live as long as the process; keywordTables() in client/protos/forms.h lists them
/// all.
///
/// Threads: read them on any thread.
namespace Zant::Enums {

// Internal to whatever the library is linked into, so that the typed functions load a word in one instruction.
ZANT_BEGIN_INTERNAL

/// The first keyword of every command; also the keyword after help.
extern const char* const cmd_strings[158];
/// After group.
extern const char* const groupOps_strings[10];
/// After groupLink.
extern const char* const groupLinkTypes_strings[4];
/// After sett renderMode.
extern const char* const renderModes_strings[2];
/// After sett imageSampler.
extern const char* const aaMode_strings[10];
/// Sent by no typed command function.
extern const char* const aaModeOld_strings[6];
/// After pm auto.
extern const char* const autoPhoton_strings[6];
/// After background, shaderNode background.
extern const char* const background_strings[12];
/// After bitmap.
extern const char* const bitmaps_strings[12];
/// After bitmap copyView, bitmapOp copyView.
extern const char* const outputChannels_strings[34];
/// After blend.
extern const char* const blend_strings[8];
/// After camera, lw camMode.
extern const char* const camera_strings[14];
/// After sett dither.
extern const char* const dither_strings[4];
/// After environment, shaderNode environment.
extern const char* const environment_strings[4];
/// After fiberPackOp.
extern const char* const fiberpackParams_strings[2];
/// After showInfo.
extern const char* const infos_strings[14];
/// After sett.
extern const char* const settings_strings[50];
/// After animOb addInstanceTransformer.
extern const char* const instanceTransformer_strings[14];
/// After fs.
extern const char* const fileCommands_strings[12];
/// After sett toneMapping.
extern const char* const toneMapSet_strings[6];
/// After light, lightAdd.
extern const char* const light_strings[48];
/// After lightOp.
extern const char* const lightOps_strings[2];
/// After materialSet.
extern const char* const materialAttrib_strings[34];
/// After materialSet texture.
extern const char* const materialTexture_strings[10];
/// After mapping.
extern const char* const mapping_strings[4];
/// After meshOp tag.
extern const char* const meshTag_strings[18];
/// After meshOp export.
extern const char* const meshExport_strings[4];
/// After meshOp.
extern const char* const meshOperations_strings[20];
/// After meshOp export grabVertexMap, vertexMap grabMesh.
extern const char* const meshVertexmapGrab_strings[4];
/// After metaTextureSet.
extern const char* const metatextureAttrib_strings[10];
/// After metaTextureSet mapping.
extern const char* const metatextureMapping_strings[10];
/// After bitmapOp save, postProcess saveImage, sett outputFormat, sett outputTo, shaderNode postProcess saveImage, view
/// postProcess saveImage, view save.
extern const char* const outputFormats_strings[8];
/// After group attachSet.
extern const char* const objectSet_strings[6];
/// After shOb.
extern const char* const miscSharedObjects_strings[6];
/// After shObOp.
extern const char* const miscSharedObjectOpetarions_strings[4];
/// After sett pixelFilter.
extern const char* const pixelFilter_strings[8];
/// After postProcess, shaderNode postProcess, view postProcess.
extern const char* const postProcessor_strings[24];
/// After sett pixelOrder, sett splitScreen auto, sett splitScreen parts, sett splitScreen size.
extern const char* const pixelServer_strings[8];
/// After surface.
extern const char* const surface_strings[102];
/// After objectAdd, shape.
extern const char* const shape_strings[36];
/// After sett splitScreen.
extern const char* const screenSplit_strings[6];
/// After shaderNode toneMap.
extern const char* const toneMapper_strings[14];
/// After texture.
extern const char* const Texture_strings[6];
/// After sett toneMapping z.
extern const char* const ztoneMapper_strings[4];
/// Sent by no typed command function.
extern const char* const datatype_strings[8];
/// After instanceAdd, instanceAdd clipMap, instanceAdd clipMap timeShift, instanceAdd timeShift, instanceLinkAdd,
/// instanceLinkAdd clipMap, instanceLinkAdd clipMap timeShift, instanceLinkAdd timeShift.
extern const char* const instanceAddAttribs_strings[4];
/// After rayCast.
extern const char* const rayCast_strings[8];
/// After pv.
extern const char* const previewCmds_strings[18];
/// After gpGpu oct, oct.
extern const char* const octreeCmds_strings[7];
/// After shapeSelectionOp.
extern const char* const shapeSelectionOps_strings[1];
/// After portalAdd.
extern const char* const portalOps_strings[4];
/// After portalAdd shapeSelectionId, portalAdd sShapeSelectionLight.
extern const char* const portalTypes_strings[2];
/// After openCl.
extern const char* const openClCmds_strings[4];
/// After gpGpu.
extern const char* const gpGpuCmds_strings[10];
/// After mesh.
extern const char* const meshInitializers_strings[6];
/// After material, metaSurface.
extern const char* const materialInitializers_strings[2];
/// After shaderNode, surfaceOp.
extern const char* const shaderNodes_strings[18];
/// Sent by no typed command function.
extern const char* const surfaceOperations_strings[2];
/// After bitmapOp.
extern const char* const bitmapOp_strings[22];
/// After light phySky, light phySun, lightAdd phySky, lightAdd phySun.
extern const char* const phySkyLights_strings[4];
/// After net.
extern const char* const net_strings[2];
/// After platform.
extern const char* const platform_strings[4];
/// After view.
extern const char* const view_strings[22];
/// After pm.
extern const char* const photonMap_strings[32];
/// After fg.
extern const char* const finalGather_strings[28];
/// After lopt.
extern const char* const lightOptions_strings[6];
/// After lw meshesOptions.
extern const char* const lightWaveMeshOptions_strings[10];
/// After lw.
extern const char* const lightWave_strings[36];
/// After tds.
extern const char* const treeds_strings[2];
/// After meshesOptions.
extern const char* const meshOptions_strings[10];
/// After anim.
extern const char* const animOperations_strings[4];
/// After animOb.
extern const char* const animObjectAttributesSet_strings[24];
/// After vertexMap.
extern const char* const vertexMapTypes_strings[2];
/// After vertexMapOp.
extern const char* const vertexMapOps_strings[4];
/// After platform mem.
extern const char* const memCmds_strings[6];
/// Sent by no typed command function.
extern const char* const renderInfosStringFormat_strings[38];

ZANT_END_INTERNAL

}  // namespace Zant::Enums

#endif
