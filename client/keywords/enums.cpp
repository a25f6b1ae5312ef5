#include "client/keywords/enums.h"

// Each keyword stands after its number; the numbers are those that the engine knows, so none may ever move.
// clang-format off
namespace Zant::Enums {

const char* const cmd_strings[158] = {
    /*   1 */ "rem",              /*   2 */ "objectAdd",        /*   3 */ "render",
    /*   4 */ "end",              /*   5 */ "echo",             /*   6 */ nullptr,
    /*   7 */ nullptr,            /*   8 */ "variable",         /*   9 */ "double",
    /*  10 */ "shapeAdd",         /*  11 */ "lightAdd",         /*  12 */ "coordSys",
    /*  13 */ "color",            /*  14 */ "vector",           /*  15 */ "shape",
    /*  16 */ "axes",             /*  17 */ "exit",             /*  18 */ "var",
    /*  19 */ "blend",            /*  20 */ "fs",               /*  21 */ "texture",
    /*  22 */ "mapping",          /*  23 */ "surface",          /*  24 */ "shaderNode",
    /*  25 */ "background",       /*  26 */ "surfaceOp",        /*  27 */ "sett",
    /*  28 */ "pv",               /*  29 */ "camera",           /*  30 */ "z2",
    /*  31 */ "zant",             /*  32 */ nullptr,            /*  33 */ "view",
    /*  34 */ "parseMode",        /*  35 */ "net",              /*  36 */ "shadowMap",
    /*  37 */ "environment",      /*  38 */ "light",            /*  39 */ "oct",
    /*  40 */ "about",            /*  41 */ "parse",            /*  42 */ "delete",
    /*  43 */ "pm",               /*  44 */ "lightOp",          /*  45 */ nullptr,
    /*  46 */ "fg",               /*  47 */ "metaTexture",      /*  48 */ "metaTextureSet",
    /*  49 */ "bitmapData",       /*  50 */ "if",               /*  51 */ "interactive",
    /*  52 */ "clear",            /*  53 */ "objectInfo",       /*  54 */ "materialSet",
    /*  55 */ "bitmapOp",         /*  56 */ nullptr,            /*  57 */ "lopt",
    /*  58 */ "bitmap",           /*  59 */ "platform",         /*  60 */ "reference",
    /*  61 */ "stop",             /*  62 */ nullptr,            /*  63 */ nullptr,
    /*  64 */ "reset",            /*  65 */ "threads",          /*  66 */ "instanceLinkAdd",
    /*  67 */ "instanceAdd",      /*  68 */ "shapeSelection",   /*  69 */ "shapeSelectionOp",
    /*  70 */ "lw",               /*  71 */ "symbolsDelete",    /*  72 */ "rayCast",
    /*  73 */ "postProcess",      /*  74 */ "groupLink",        /*  75 */ "openCl",
    /*  76 */ "help",             /*  77 */ "commandsProtos",   /*  78 */ "gpGpu",
    /*  79 */ nullptr,            /*  80 */ "meshOp",           /*  81 */ "animObLink",
    /*  82 */ "anim",             /*  83 */ "showInfo",         /*  84 */ "animOb",
    /*  85 */ "group",            /*  86 */ "vertexMapOp",      /*  87 */ "vertexMap",
    /*  88 */ "vertex2d",         /*  89 */ "vertex3d",         /*  90 */ "vertexData",
    /*  91 */ "for",              /*  92 */ "include",          /*  93 */ nullptr,
    /*  94 */ "pause",            /*  95 */ "while",            /*  96 */ nullptr,
    /*  97 */ "tds",              /*  98 */ "meshesOptions",    /*  99 */ "mesh",
    /* 100 */ "meshAddPoly",      /* 101 */ nullptr,            /* 102 */ "material",
    /* 103 */ "metaSurface",      /* 104 */ nullptr,            /* 105 */ "shObOp",
    /* 106 */ "shOb",             /* 107 */ "portalAdd",        /* 108 */ nullptr,
    /* 109 */ nullptr,            /* 110 */ nullptr,            /* 111 */ nullptr,
    /* 112 */ "string",           /* 113 */ "stringId",         /* 114 */ "displaceMap",
    /* 115 */ "fiberPack",        /* 116 */ "fiberPackOp",      /* 117 */ nullptr,
    /* 118 */ nullptr,            /* 119 */ nullptr,            /* 120 */ nullptr,
    /* 121 */ nullptr,            /* 122 */ nullptr,            /* 123 */ nullptr,
    /* 124 */ nullptr,            /* 125 */ nullptr,            /* 126 */ nullptr,
    /* 127 */ nullptr,            /* 128 */ nullptr,            /* 129 */ nullptr,
    /* 130 */ nullptr,            /* 131 */ nullptr,            /* 132 */ nullptr,
    /* 133 */ nullptr,            /* 134 */ nullptr,            /* 135 */ nullptr,
    /* 136 */ nullptr,            /* 137 */ nullptr,            /* 138 */ nullptr,
    /* 139 */ nullptr,            /* 140 */ nullptr,            /* 141 */ nullptr,
    /* 142 */ nullptr,            /* 143 */ nullptr,            /* 144 */ nullptr,
    /* 145 */ nullptr,            /* 146 */ nullptr,            /* 147 */ nullptr,
    /* 148 */ nullptr,            /* 149 */ nullptr,            /* 150 */ nullptr,
    /* 151 */ nullptr,            /* 152 */ nullptr,            /* 153 */ nullptr,
    /* 154 */ "function",         /* 155 */ "class",            /* 156 */ "return",
    /* 157 */ "classObject",      /* 158 */ "method",
};

const char* const groupOps_strings[10] = {
    /*  1 */ "clear",           /*  2 */ "select",          /*  3 */ "remove",          /*  4 */ "selectInstance",
    /*  5 */ "attachSet",       /*  6 */ "add",             /*  7 */ "addInstance",     /*  8 */ "removeAll",
    /*  9 */ "updateMaterials", /* 10 */ "removeUnused",
};

const char* const groupLinkTypes_strings[4] = {
    /* 1 */ "group",          /* 2 */ "instance",       /* 3 */ "attachGroup",    /* 4 */ "attachInstance",
};

const char* const renderModes_strings[2] = {
    /* 1 */ "raytrace", /* 2 */ "mlt",
};

const char* const aaMode_strings[10] = {
    /*  1 */ "none",             /*  2 */ "uniform",          /*  3 */ "qmcAdaptive",      /*  4 */ "totalUniform",
    /*  5 */ "totalQmcAdaptive", /*  6 */ "totalQmc",         /*  7 */ "totalRandom",      /*  8 */ "rotUniform",
    /*  9 */ "totalRotUniform",  /* 10 */ "totalMbRandom",
};

const char* const aaModeOld_strings[6] = {
    /* 1 */ "uniform",      /* 2 */ "adaptive",     /* 3 */ "path",         /* 4 */ "coneUniform",
    /* 5 */ "coneAdaptive", /* 6 */ "conePath",
};

const char* const autoPhoton_strings[6] = {
    /* 1 */ "global",          /* 2 */ "caustics",        /* 3 */ nullptr,           /* 4 */ "gScaleCaustics",
    /* 5 */ nullptr,           /* 6 */ "gScalePrecached",
};

const char* const background_strings[12] = {
    /*  1 */ "color",         /*  2 */ "sky",           /*  3 */ "shader",        /*  4 */ nullptr,
    /*  5 */ "sphereMap",     /*  6 */ "fishEyeMap",    /*  7 */ nullptr,         /*  8 */ nullptr,
    /*  9 */ "phySky",        /* 10 */ "phySkyEnv",     /* 11 */ nullptr,         /* 12 */ "directionsMap",
};

const char* const bitmaps_strings[12] = {
    /*  1 */ "load",      /*  2 */ "charGray",  /*  3 */ "charRgba",  /*  4 */ "floatGray", /*  5 */ "floatRgb",
    /*  6 */ "floatRgba", /*  7 */ "compress",  /*  8 */ "copy",      /*  9 */ "alphaMap",  /* 10 */ "bumpMap",
    /* 11 */ "copyView",  /* 12 */ "bitPlane",
};

const char* const outputChannels_strings[34] = {
    /*  1 */ "rgb",     /*  2 */ "alph",    /*  3 */ "txtr",    /*  4 */ "zbuf",    /*  5 */ "dire",
    /*  6 */ "shdn",    /*  7 */ "indi",    /*  8 */ "posi",    /*  9 */ "caus",    /* 10 */ nullptr,
    /* 11 */ "refl",    /* 12 */ nullptr,   /* 13 */ "refr",    /* 14 */ nullptr,   /* 15 */ "lumi",
    /* 16 */ nullptr,   /* 17 */ "othr",    /* 18 */ nullptr,   /* 19 */ "sfid",    /* 20 */ nullptr,
    /* 21 */ "obid",    /* 22 */ nullptr,   /* 23 */ "norm",    /* 24 */ nullptr,   /* 25 */ nullptr,
    /* 26 */ nullptr,   /* 27 */ nullptr,   /* 28 */ nullptr,   /* 29 */ nullptr,   /* 30 */ nullptr,
    /* 31 */ nullptr,   /* 32 */ nullptr,   /* 33 */ "rgba",    /* 34 */ "preview",
};

const char* const blend_strings[8] = {
    /* 1 */ "total",       /* 2 */ "partial",     /* 3 */ "none",        /* 4 */ "superficial", /* 5 */ "fromShader",
    /* 6 */ nullptr,       /* 7 */ "default",     /* 8 */ nullptr,
};

const char* const camera_strings[14] = {
    /*  1 */ "perspective", /*  2 */ "sphere",      /*  3 */ "lens1",       /*  4 */ "lens2",
    /*  5 */ "mesh",        /*  6 */ "fishEye",     /*  7 */ "parallel",    /*  8 */ "stereo",
    /*  9 */ "parallelExt", /* 10 */ "castMaps",    /* 11 */ "move",        /* 12 */ "rotate",
    /* 13 */ "shift",       /* 14 */ "picture",
};

const char* const dither_strings[4] = {
    /* 1 */ "simple",         /* 2 */ "random",         /* 3 */ "floydSteinberg", /* 4 */ "qRandom",
};

const char* const environment_strings[4] = {
    /* 1 */ "shader",    /* 2 */ "colorFade", /* 3 */ "phySky",    /* 4 */ nullptr,
};

const char* const fiberpackParams_strings[2] = {
    /* 1 */ "bBoxSize", /* 2 */ "addFiber",
};

const char* const infos_strings[14] = {
    /*  1 */ "scene",      /*  2 */ "bitmaps",    /*  3 */ "symbols",    /*  4 */ "bitmapsExt", /*  5 */ "vertexMaps",
    /*  6 */ nullptr,      /*  7 */ "pm",         /*  8 */ "fg",         /*  9 */ "shared",     /* 10 */ "all",
    /* 11 */ "views",      /* 12 */ "fiberPacks", /* 13 */ "anim",       /* 14 */ nullptr,
};

const char* const settings_strings[50] = {
    /*  1 */ "bitmapPixelCompression", /*  2 */ "energetic",              /*  3 */ "recurse",
    /*  4 */ "maxRayColor",            /*  5 */ "renderMode",             /*  6 */ "outsideSize",
    /*  7 */ "aRecurse",               /*  8 */ "sssOct",                 /*  9 */ "sssErr",
    /* 10 */ "rayDiff",                /* 11 */ "underSample",            /* 12 */ "aWeight",
    /* 13 */ "imageSamplerMultiPass",  /* 14 */ "subframeRecomputeFlags", /* 15 */ "failBitmap",
    /* 16 */ "vrPrerender",            /* 17 */ "instanceOctreeWeight",   /* 18 */ "undersamplePrerender",
    /* 19 */ nullptr,                  /* 20 */ nullptr,                  /* 21 */ "pixelBufOrder",
    /* 22 */ "miscBufOrder",           /* 23 */ "threadMinSplit",         /* 24 */ "semaphoreFileTryDelete",
    /* 25 */ "lightRaysShadowCheck",   /* 26 */ nullptr,                  /* 27 */ "instanceRecurse",
    /* 28 */ "outputTo",               /* 29 */ "pixelOrder",             /* 30 */ "outputFormat",
    /* 31 */ nullptr,                  /* 32 */ nullptr,                  /* 33 */ "renderInfo",
    /* 34 */ "renderInfoSize",         /* 35 */ "imageSampler",           /* 36 */ "edgeDetector",
    /* 37 */ "splitScreen",            /* 38 */ "dither",                 /* 39 */ "buffersMask",
    /* 40 */ "ditherAmplitude",        /* 41 */ "edgeDetectorGlobals",    /* 42 */ "edgeDetectorSlot",
    /* 43 */ "logFile",                /* 44 */ "debug",                  /* 45 */ "debugTestValue",
    /* 46 */ "pixelFilter",            /* 47 */ "mipMap",                 /* 48 */ "toneMapping",
    /* 49 */ "previewSize",            /* 50 */ "debugExecute",
};

const char* const instanceTransformer_strings[14] = {
    /*  1 */ "randomSeed",         /*  2 */ "randRotate",         /*  3 */ "randScaleX",
    /*  4 */ "randScaleY",         /*  5 */ "randScaleZ",         /*  6 */ "randScale",
    /*  7 */ "copyAxes",           /*  8 */ "normalRotate",       /*  9 */ "localAxes",
    /* 10 */ "worldAxes",          /* 11 */ "copyRevAxes",        /* 12 */ "normalRandomRotate",
    /* 13 */ "normalFixedRotate",  /* 14 */ "patternAxes",
};

const char* const fileCommands_strings[12] = {
    /*  1 */ "copy",               /*  2 */ "appendString",       /*  3 */ "cat",
    /*  4 */ "hexCat",             /*  5 */ "pathSlashCut",       /*  6 */ "pathRemove",
    /*  7 */ "pathSkipCurrentDir", /*  8 */ "pathShow",           /*  9 */ "pathAdd",
    /* 10 */ "openUrl",            /* 11 */ "list",               /* 12 */ nullptr,
};

const char* const toneMapSet_strings[6] = {
    /* 1 */ nullptr, /* 2 */ "ray",   /* 3 */ nullptr, /* 4 */ "edge",  /* 5 */ nullptr, /* 6 */ "z",
};

const char* const light_strings[48] = {
    /*  1 */ "point",                   /*  2 */ "shape",                   /*  3 */ "rangeLimiter",
    /*  4 */ "fakePhotonEmitter",       /*  5 */ "spot",                    /*  6 */ "group",
    /*  7 */ "symbol",                  /*  8 */ "pointTextured",           /*  9 */ "parallel",
    /* 10 */ "rectangle",               /* 11 */ "rectangleSpot",           /* 12 */ "shadowMapPoint",
    /* 13 */ "shapeTextured",           /* 14 */ "dirPoint",                /* 15 */ "fadePoint",
    /* 16 */ "fade",                    /* 17 */ "linear",                  /* 18 */ "fadeDirPoint",
    /* 19 */ "line",                    /* 20 */ "adaptive",                /* 21 */ "adaptiveSpot",
    /* 22 */ "phySun",                  /* 23 */ "sphere",                  /* 24 */ "shadowCache",
    /* 25 */ "sphereTextured",          /* 26 */ "spotTextured",            /* 27 */ "parallelTextured",
    /* 28 */ "rectangleTextured",       /* 29 */ "rectangleSpotTextured",   /* 30 */ "shadowMapPointTextured",
    /* 31 */ "dirPointTextured",        /* 32 */ "fadePointTextured",       /* 33 */ "lineTextured",
    /* 34 */ "fadeDirPointTextured",    /* 35 */ "ies",                     /* 36 */ "groupImportance",
    /* 37 */ "distantSphere",           /* 38 */ "background",              /* 39 */ "phySky",
    /* 40 */ "ambient",                 /* 41 */ "ambientTextured",         /* 42 */ "photonMultiplier",
    /* 43 */ "rectangleDS",             /* 44 */ "rectangleSpotDS",         /* 45 */ "rectangleTexturedDS",
    /* 46 */ "rectangleSpotTexturedDS", /* 47 */ "shapeSurfaced",           /* 48 */ "far",
};

const char* const lightOps_strings[2] = {
    /* 1 */ "shadow", /* 2 */ nullptr,
};

const char* const materialAttrib_strings[34] = {
    /*  1 */ "diffuse",                  /*  2 */ nullptr,                    /*  3 */ "light",
    /*  4 */ "fresnel",                  /*  5 */ "translucency",             /*  6 */ nullptr,
    /*  7 */ "ior",                      /*  8 */ "bumpDepth",                /*  9 */ "forceColor",
    /* 10 */ "lightGroup",               /* 11 */ "color",                    /* 12 */ nullptr,
    /* 13 */ nullptr,                    /* 14 */ nullptr,                    /* 15 */ "transparency",
    /* 16 */ "edgeDetectSlot",           /* 17 */ "diffuseModel",             /* 18 */ "reflection",
    /* 19 */ "reflectionBlur",           /* 20 */ "refractionBlur",           /* 21 */ "blurRays",
    /* 22 */ "blurMaxRays",              /* 23 */ "blurTolerance",            /* 24 */ "flags",
    /* 25 */ "specularity",              /* 26 */ "glossiness",               /* 27 */ "reflectionBlurLights",
    /* 28 */ "transparencyAffects",      /* 29 */ "backSideFlags",            /* 30 */ "ambientOcclusionColor",
    /* 31 */ nullptr,                    /* 32 */ nullptr,                    /* 33 */ "ambientOcclusionDistance",
    /* 34 */ "texture",
};

const char* const materialTexture_strings[10] = {
    /*  1 */ "color",        /*  2 */ "diffuse",      /*  3 */ "translucency", /*  4 */ "transparency",
    /*  5 */ "light",        /*  6 */ "reflection",   /*  7 */ "specularity",  /*  8 */ "bump",
    /*  9 */ "normal",       /* 10 */ nullptr,
};

const char* const mapping_strings[4] = {
    /* 1 */ "rect",          /* 2 */ "sphere",        /* 3 */ "tube",          /* 4 */ "triangleUvMap",
};

const char* const meshTag_strings[18] = {
    /*  1 */ "material",             /*  2 */ "shader",               /*  3 */ nullptr,
    /*  4 */ "smoothing",            /*  5 */ "flags",                /*  6 */ nullptr,
    /*  7 */ "displaceDepth",        /*  8 */ "displacePointUv",      /*  9 */ "displacePolyUv",
    /* 10 */ "displaceDepthPointUv", /* 11 */ "displaceDepthPolyUv",  /* 12 */ "clipMap",
    /* 13 */ "normalPointMap",       /* 14 */ "normalPolyMap",        /* 15 */ "displaceMap",
    /* 16 */ "directClipMap",        /* 17 */ "name",                 /* 18 */ nullptr,
};

const char* const meshExport_strings[4] = {
    /* 1 */ "grabVertexMap", /* 2 */ "videoScape",    /* 3 */ "json",          /* 4 */ nullptr,
};

const char* const meshOperations_strings[20] = {
    /*  1 */ "export",              /*  2 */ "removeDuplicates",    /*  3 */ "align",
    /*  4 */ "removeUnusedTags",    /*  5 */ "autoGroup",           /*  6 */ "geometricNormalFlip",
    /*  7 */ "setUvIndexShift",     /*  8 */ "saveScript",          /*  9 */ "points",
    /* 10 */ "pointMeta",           /* 11 */ "polyMeta",            /* 12 */ "metaShare",
    /* 13 */ "pointNormals",        /* 14 */ "polyNormals",         /* 15 */ "tagsMap",
    /* 16 */ "tag",                 /* 17 */ "addPolyTagName",      /* 18 */ "findQuads",
    /* 19 */ "flip",                /* 20 */ "shadingNormalFlip",
};

const char* const meshVertexmapGrab_strings[4] = {
    /* 1 */ "discretizePoints", /* 2 */ "samplePoints",     /* 3 */ "gridSamplePoints", /* 4 */ nullptr,
};

const char* const metatextureAttrib_strings[10] = {
    /*  1 */ "mapping",        /*  2 */ "lod",            /*  3 */ "inputTone",      /*  4 */ "wraping",
    /*  5 */ "bitmap",         /*  6 */ "worldCoords",    /*  7 */ "colorVmap",      /*  8 */ "color",
    /*  9 */ "bitmapFilename", /* 10 */ nullptr,
};

const char* const metatextureMapping_strings[10] = {
    /*  1 */ "external",            /*  2 */ "uv",                  /*  3 */ "rect",
    /*  4 */ "sphere",              /*  5 */ "tube",                /*  6 */ "sphereDirection",
    /*  7 */ "projection",          /*  8 */ "projectionDirection", /*  9 */ "fishEye",
    /* 10 */ "fishEyeDirection",
};

const char* const outputFormats_strings[8] = {
    /* 1 */ "bmp",   /* 2 */ "png",   /* 3 */ "tga",   /* 4 */ "hdr",   /* 5 */ "exr",   /* 6 */ nullptr,
    /* 7 */ "jpg",   /* 8 */ "tif",
};

const char* const objectSet_strings[6] = {
    /* 1 */ nullptr,    /* 2 */ nullptr,    /* 3 */ "function", /* 4 */ nullptr,    /* 5 */ "mesh",
    /* 6 */ nullptr,
};

const char* const miscSharedObjects_strings[6] = {
    /* 1 */ "physky",  /* 2 */ "physky2", /* 3 */ "water",   /* 4 */ "ies",     /* 5 */ "physky0", /* 6 */ nullptr,
};

const char* const miscSharedObjectOpetarions_strings[4] = {
    /* 1 */ "waterIterate",   /* 2 */ "waterSetBounds", /* 3 */ "waterDisturb",   /* 4 */ "flags",
};

const char* const pixelFilter_strings[8] = {
    /* 1 */ "box",      /* 2 */ "cone",     /* 3 */ "lanczos",  /* 4 */ "mitchell", /* 5 */ "spline",
    /* 6 */ "catmull",  /* 7 */ "cubic",    /* 8 */ "quadric",
};

const char* const postProcessor_strings[24] = {
    /*  1 */ "filter",                 /*  2 */ "shader",                 /*  3 */ "add",
    /*  4 */ "dof",                    /*  5 */ "glow",                   /*  6 */ "erode",
    /*  7 */ nullptr,                  /*  8 */ "gBlur",                  /*  9 */ "autoExp",
    /* 10 */ "mult",                   /* 11 */ "gamma",                  /* 12 */ "desaturate",
    /* 13 */ "histogramFix",           /* 14 */ "saveZ",                  /* 15 */ "bitmapOverlay",
    /* 16 */ "ca",                     /* 17 */ nullptr,                  /* 18 */ "saveNormal",
    /* 19 */ "saveImage",              /* 20 */ "stereogram",             /* 21 */ "trimAlpha",
    /* 22 */ "erodeAlpha",             /* 23 */ "setDirectionsMapFormat", /* 24 */ nullptr,
};

const char* const pixelServer_strings[8] = {
    /* 1 */ "scanLine",    /* 2 */ "scanRow",     /* 3 */ "progressive", /* 4 */ "random",      /* 5 */ "worm",
    /* 6 */ "frost",       /* 7 */ "ripples",     /* 8 */ "flood",
};

const char* const surface_strings[102] = {
    /*   1 */ "diffuse",               /*   2 */ "metalic",               /*   3 */ "shaded",
    /*   4 */ "default",               /*   5 */ "fromShader",            /*   6 */ nullptr,
    /*   7 */ "bump",                  /*   8 */ "nrgTest",               /*   9 */ nullptr,
    /*  10 */ "energetic",             /*  11 */ nullptr,                 /*  12 */ nullptr,
    /*  13 */ nullptr,                 /*  14 */ nullptr,                 /*  15 */ nullptr,
    /*  16 */ "shSdEnergetic",         /*  17 */ "shSdSmoothEnergetic",   /*  18 */ "hybrid",
    /*  19 */ nullptr,                 /*  20 */ nullptr,                 /*  21 */ "reflect",
    /*  22 */ "black",                 /*  23 */ "hybridRgb",             /*  24 */ "transparent",
    /*  25 */ "glassTransparent2",     /*  26 */ nullptr,                 /*  27 */ "glass2",
    /*  28 */ "sTransparent",          /*  29 */ "filterMetalic",         /*  30 */ nullptr,
    /*  31 */ nullptr,                 /*  32 */ nullptr,                 /*  33 */ nullptr,
    /*  34 */ nullptr,                 /*  35 */ "shadeMap",              /*  36 */ "reflectMap",
    /*  37 */ "envMap",                /*  38 */ "statd",                 /*  39 */ "blur2",
    /*  40 */ "filter",                /*  41 */ "dSide",                 /*  42 */ "stat",
    /*  43 */ "color",                 /*  44 */ "statReflect",           /*  45 */ "dispGlass2",
    /*  46 */ "dReflect",              /*  47 */ "cosColor",              /*  48 */ "qStat",
    /*  49 */ "qStatReflect",          /*  50 */ "qStatD",                /*  51 */ "qStatDReflect",
    /*  52 */ "pmcShaded",             /*  53 */ nullptr,                 /*  54 */ "pmPrecached",
    /*  55 */ "cShaded",               /*  56 */ nullptr,                 /*  57 */ nullptr,
    /*  58 */ nullptr,                 /*  59 */ "pmShaded",              /*  60 */ "gStat",
    /*  61 */ "nrgShaded",             /*  62 */ nullptr,                 /*  63 */ "light",
    /*  64 */ "pmUnfiltered",          /*  65 */ "pmLight",               /*  66 */ "fresnel",
    /*  67 */ "dist2",                 /*  68 */ "dist3",                 /*  69 */ nullptr,
    /*  70 */ nullptr,                 /*  71 */ "cell",                  /*  72 */ "sss",
    /*  73 */ "gisst",                 /*  74 */ "sst",                   /*  75 */ "fHybrid",
    /*  76 */ nullptr,                 /*  77 */ nullptr,                 /*  78 */ nullptr,
    /*  79 */ "zeroTransparent2",      /*  80 */ nullptr,                 /*  81 */ "noCC",
    /*  82 */ "dist",                  /*  83 */ "pmDirect",              /*  84 */ nullptr,
    /*  85 */ "pmmcShaded",            /*  86 */ "pmcmcShaded",           /*  87 */ "glassTransparentText2",
    /*  88 */ "ids",                   /*  89 */ "occlusionMap",          /*  90 */ "ambientOcclusion",
    /*  91 */ nullptr,                 /*  92 */ nullptr,                 /*  93 */ nullptr,
    /*  94 */ nullptr,                 /*  95 */ "pmBaked",               /*  96 */ "pmbShaded",
    /*  97 */ "pmbcShaded",            /*  98 */ "mltHybrid",             /*  99 */ "btHybrid",
    /* 100 */ "normal",                /* 101 */ "wireNormal",            /* 102 */ "uvColors",
};

const char* const shape_strings[36] = {
    /*  1 */ "wall",           /*  2 */ "sphere",         /*  3 */ "clipMap",        /*  4 */ "triangle",
    /*  5 */ "uvTriangle",     /*  6 */ "polygon",        /*  7 */ "tube",           /*  8 */ "cone",
    /*  9 */ "paraboloid",     /* 10 */ "circle",         /* 11 */ "rectangle",      /* 12 */ "ellipsoid",
    /* 13 */ "and2",           /* 14 */ "or2",            /* 15 */ "sub2",           /* 16 */ nullptr,
    /* 17 */ "elipTube",       /* 18 */ "elipCone",       /* 19 */ "elipParaboloid", /* 20 */ "fibers",
    /* 21 */ nullptr,          /* 22 */ "dQuad",          /* 23 */ "testShape",      /* 24 */ "intTriangle",
    /* 25 */ "triangleSs",     /* 26 */ "uvTriangleSs",   /* 27 */ "intTriangleSs",  /* 28 */ "mandelBulb",
    /* 29 */ "isoSurface",     /* 30 */ "distanceField",  /* 31 */ "qJulia",         /* 32 */ "dTriangle",
    /* 33 */ "dTriangleSs",    /* 34 */ "dIntTriangle",   /* 35 */ "dIntTriangleSs", /* 36 */ nullptr,
};

const char* const screenSplit_strings[6] = {
    /* 1 */ "auto",       /* 2 */ "parts",      /* 3 */ "size",       /* 4 */ "betterAuto", /* 5 */ "none",
    /* 6 */ nullptr,
};

const char* const toneMapper_strings[14] = {
    /*  1 */ "linear",       /*  2 */ "gamma",        /*  3 */ "exponential",  /*  4 */ "vGamma",
    /*  5 */ "vExponential", /*  6 */ "limitDr",      /*  7 */ "vLimitDr",     /*  8 */ nullptr,
    /*  9 */ nullptr,        /* 10 */ "desaturate",   /* 11 */ "reverse",      /* 12 */ "gammaAlpha",
    /* 13 */ "vGammaAlpha",  /* 14 */ nullptr,
};

const char* const Texture_strings[6] = {
    /* 1 */ "color",      /* 2 */ "bitmap",     /* 3 */ "wire",       /* 4 */ "lodBitmap",  /* 5 */ "toneMap",
    /* 6 */ "fromShader",
};

const char* const ztoneMapper_strings[4] = {
    /* 1 */ "linear",  /* 2 */ "inverse", /* 3 */ "log",     /* 4 */ nullptr,
};

const char* const datatype_strings[8] = {
    /* 1 */ "variable",  /* 2 */ "var",       /* 3 */ "double",    /* 4 */ "vector",    /* 5 */ "axes",
    /* 6 */ "string",    /* 7 */ "reference", /* 8 */ nullptr,
};

const char* const instanceAddAttribs_strings[4] = {
    /* 1 */ "clipMap",   /* 2 */ "timeShift", /* 3 */ "light",     /* 4 */ nullptr,
};

const char* const rayCast_strings[8] = {
    /* 1 */ "camera",           /* 2 */ "z",                /* 3 */ "cameraZ",          /* 4 */ "zToHit",
    /* 5 */ "hitToNormalQuick", /* 6 */ "cameraHit",        /* 7 */ "init",             /* 8 */ nullptr,
};

const char* const previewCmds_strings[18] = {
    /*  1 */ "start",              /*  2 */ "stop",               /*  3 */ "setAutoRestart",
    /*  4 */ "pause",              /*  5 */ "waitLevel",          /*  6 */ "setDelay",
    /*  7 */ "none",               /*  8 */ "raytrace",           /*  9 */ "rasterize",
    /* 10 */ "setWeight",          /* 11 */ "render",             /* 12 */ "restart",
    /* 13 */ "flayer",             /* 14 */ "iterativeWaitLevel", /* 15 */ "on",
    /* 16 */ "raycast",            /* 17 */ "setAnimMode",        /* 18 */ "pauseSignal",
};

const char* const octreeCmds_strings[7] = {
    /* 1 */ "limits",     /* 2 */ "build",      /* 3 */ "stats",      /* 4 */ "show",       /* 5 */ "explorer",
    /* 6 */ "flags",      /* 7 */ "invalidate",
};

const char* const shapeSelectionOps_strings[1] = {
    /* 1 */ "add",
};

const char* const portalOps_strings[4] = {
    /* 1 */ "lightId",              /* 2 */ "shapeSelectionId",     /* 3 */ "sShapeSelectionLight",
    /* 4 */ nullptr,
};

const char* const portalTypes_strings[2] = {
    /* 1 */ "global",   /* 2 */ "caustics",
};

const char* const openClCmds_strings[4] = {
    /* 1 */ "platforms",    /* 2 */ "devices",      /* 3 */ "platformInfo", /* 4 */ "deviceInfo",
};

const char* const gpGpuCmds_strings[10] = {
    /*  1 */ "listAvailable", /*  2 */ "listUsed",      /*  3 */ "clear",         /*  4 */ "useGpus",
    /*  5 */ "remove",        /*  6 */ "addOpenCl",     /*  7 */ "addInternal",   /*  8 */ "addDebug",
    /*  9 */ "oct",           /* 10 */ "useInternal",
};

const char* const meshInitializers_strings[6] = {
    /* 1 */ "triple",        /* 2 */ "fromVertexMap", /* 3 */ "import",        /* 4 */ "fromAnimOb",
    /* 5 */ "fromBitmap",    /* 6 */ nullptr,
};

const char* const materialInitializers_strings[2] = {
    /* 1 */ "fromMeshTag",     /* 2 */ "fromMeshTagName",
};

const char* const shaderNodes_strings[18] = {
    /*  1 */ "fromMeshTag",     /*  2 */ "twoSided",        /*  3 */ "toneMapFilter",   /*  4 */ "background",
    /*  5 */ "extractAlpha",    /*  6 */ "environment",     /*  7 */ "chain",           /*  8 */ "dummy",
    /*  9 */ "toneMap",         /* 10 */ "mix",             /* 11 */ "postProcess",     /* 12 */ "fromMeshTagName",
    /* 13 */ "wire",            /* 14 */ "lowLevel",        /* 15 */ "visibilityFlags", /* 16 */ "colorFilter",
    /* 17 */ "giDesaturate",    /* 18 */ nullptr,
};

const char* const surfaceOperations_strings[2] = {
    /* 1 */ "setFlag",   /* 2 */ "clearFlag",
};

const char* const bitmapOp_strings[22] = {
    /*  1 */ "plot",           /*  2 */ "copy",           /*  3 */ "show",           /*  4 */ "showZ",
    /*  5 */ "showAlpha",      /*  6 */ "showDirections", /*  7 */ "copyView",       /*  8 */ "load",
    /*  9 */ "save",           /* 10 */ "process",        /* 11 */ "resize",         /* 12 */ "line",
    /* 13 */ "circle",         /* 14 */ "fill",           /* 15 */ "clear",          /* 16 */ "flush",
    /* 17 */ "showHit",        /* 18 */ "saveScript",     /* 19 */ "saveRaw",        /* 20 */ "loadRaw",
    /* 21 */ "blit",           /* 22 */ nullptr,
};

const char* const phySkyLights_strings[4] = {
    /* 1 */ "point",             /* 2 */ "parallel",          /* 3 */ "rectangle",         /* 4 */ "rectangleTextured",
};

const char* const net_strings[2] = {
    /* 1 */ "server", /* 2 */ "ftp",
};

const char* const platform_strings[4] = {
    /* 1 */ "options", /* 2 */ "test",    /* 3 */ "mem",     /* 4 */ nullptr,
};

const char* const view_strings[22] = {
    /*  1 */ "select",            /*  2 */ "remove",            /*  3 */ "close",
    /*  4 */ "camSingleSide",     /*  5 */ "camAspect",         /*  6 */ "size",
    /*  7 */ "save",              /*  8 */ "flags",             /*  9 */ nullptr,
    /* 10 */ nullptr,             /* 11 */ nullptr,             /* 12 */ "freeRenderedImage",
    /* 13 */ "removeAll",         /* 14 */ "window",            /* 15 */ "offset",
    /* 16 */ "rayDiff",           /* 17 */ "postProcess",       /* 18 */ "toneMapping",
    /* 19 */ "setActive",         /* 20 */ "selectActive",      /* 21 */ "render",
    /* 22 */ "camFilter",
};

const char* const photonMap_strings[32] = {
    /*  1 */ "causticsBuild",                   /*  2 */ "causticsSearch",
    /*  3 */ "globalBuildLightMap",             /*  4 */ "photonNormal",
    /*  5 */ "removeUnused",                    /*  6 */ "globalBuild",
    /*  7 */ "globalSearch",                    /*  8 */ "precachedBuild",
    /*  9 */ "precachedSearch",                 /* 10 */ "receivedMinHitRatio",
    /* 11 */ nullptr,                           /* 12 */ "smoothPrecacheScale",
    /* 13 */ "globalMultiplier",                /* 14 */ "precacheLimitdr",
    /* 15 */ "lmImportance",                    /* 16 */ "lmAnim",
    /* 17 */ "causticsMultiplier",              /* 18 */ "precachedBlur",
    /* 19 */ "causticsRrValue",                 /* 20 */ "precachedCorner",
    /* 21 */ "showPreview",                     /* 22 */ "auto",
    /* 23 */ "stats",                           /* 24 */ "timePrecached",
    /* 25 */ "kdBalance",                       /* 26 */ "kdOptimize",
    /* 27 */ "reset",                           /* 28 */ "globalBuildLightMapWithCaustics",
    /* 29 */ "render",                          /* 30 */ "globalFlags",
    /* 31 */ "causticsFlags",                   /* 32 */ "precachedFlags",
};

const char* const finalGather_strings[28] = {
    /*  1 */ "gradients2",                 /*  2 */ "gradients3",                 /*  3 */ "gradients4",
    /*  4 */ "gradReload",                 /*  5 */ "gradSidethreshold",          /*  6 */ "gradients",
    /*  7 */ "gradientsNeighbour",         /*  8 */ "irradianceBlurGamma",        /*  9 */ "irradianceBlur",
    /* 10 */ "showSamples",                /* 11 */ "gradientsFlags",             /* 12 */ "raysNMultiplier",
    /* 13 */ "irrMissingBlur",             /* 14 */ "showCornerSamples",          /* 15 */ "pixels",
    /* 16 */ "rays",                       /* 17 */ "timeGradients",              /* 18 */ "pmCorner",
    /* 19 */ "scale",                      /* 20 */ "scaleRelativeToGlobalPm",    /* 21 */ "scaleRelativeToPrecachedPm",
    /* 22 */ "prerender",                  /* 23 */ "reset",                      /* 24 */ "render",
    /* 25 */ "raysPresampled",             /* 26 */ "presample",                  /* 27 */ "save",
    /* 28 */ "load",
};

const char* const lightOptions_strings[6] = {
    /* 1 */ "rectangleQuality", /* 2 */ "lemQuality",       /* 3 */ nullptr,            /* 4 */ "lineQuality",
    /* 5 */ "presample",        /* 6 */ nullptr,
};

const char* const lightWaveMeshOptions_strings[10] = {
    /*  1 */ nullptr,                 /*  2 */ "textureSystem",         /*  3 */ "blur",
    /*  4 */ "sideness",              /*  5 */ "airPolys",              /*  6 */ "baseNormalGrab",
    /*  7 */ "raysLimit",             /*  8 */ "blurDoubleSide",        /*  9 */ "unseenByRaysAffectsGi",
    /* 10 */ "reflectBlurModel",
};

const char* const lightWave_strings[36] = {
    /*  1 */ "areaLights",               /*  2 */ "sceneLoad",                /*  3 */ "camMode",
    /*  4 */ "meshesOptions",            /*  5 */ "coneToArea",               /*  6 */ "environmentFlags",
    /*  7 */ "shaderNodeBackground",     /*  8 */ "shaderNodeEnvironment",    /*  9 */ "raySamples",
    /* 10 */ "bitmapLoad",               /* 11 */ "directLoader",             /* 12 */ "camCastMaps",
    /* 13 */ "ignoreItemId",             /* 14 */ "ignoreItemName",           /* 15 */ "pathMode",
    /* 16 */ "lightInputTone",           /* 17 */ "camBokeh",                 /* 18 */ "selfInstance",
    /* 19 */ "camMeshAndUv",             /* 20 */ "camDofTargetObject",       /* 21 */ "outputTo",
    /* 22 */ "camStereo",                /* 23 */ "replaceLight",             /* 24 */ "instanceTemplateItem",
    /* 25 */ "backgroundInputTone",      /* 26 */ "textureInputTone",         /* 27 */ "inputTone",
    /* 28 */ "sceneReLoad",              /* 29 */ "commRingEvent",            /* 30 */ "invalidateScene",
    /* 31 */ "controlAmbient",           /* 32 */ "controlBackground",        /* 33 */ "controlEnvironment",
    /* 34 */ "itemReload",               /* 35 */ "nonPhyLightsCastsPhotons", /* 36 */ "setGlobalHandlers",
};

const char* const treeds_strings[2] = {
    /* 1 */ nullptr,     /* 2 */ "sceneLoad",
};

const char* const meshOptions_strings[10] = {
    /*  1 */ "diffuseModel",                      /*  2 */ "overrideSurface",
    /*  3 */ "surfaceFlags",                      /*  4 */ "bitFlags",
    /*  5 */ "overrideColor",                     /*  6 */ "overrideWire",
    /*  7 */ "illuminateModel",                   /*  8 */ "ambientOcclusion",
    /*  9 */ "preprocessFlags",                   /* 10 */ "preprocessDuplicatePointTolerance",
};

const char* const animOperations_strings[4] = {
    /* 1 */ "setupFrame",  /* 2 */ "setFps",      /* 3 */ "reset",       /* 4 */ "renderFrame",
};

const char* const animObjectAttributesSet_strings[24] = {
    /*  1 */ "setParent",                 /*  2 */ "typeCopy",                  /*  3 */ "rename",
    /*  4 */ "setStatic",                 /*  5 */ "showKeys",                  /*  6 */ "clearKeys",
    /*  7 */ "addPositionKey",            /*  8 */ "addAxesKey",                /*  9 */ "addChannelKey",
    /* 10 */ "typeMesh",                  /* 11 */ "typeNull",                  /* 12 */ "remove",
    /* 13 */ "setActive",                 /* 14 */ "typeMeshInstance",          /* 15 */ "typeInstance",
    /* 16 */ "addInstanceTransformer",    /* 17 */ "clearInstanceTransformers", /* 18 */ "addKey",
    /* 19 */ "setMeshHandnessAutoFlip",   /* 20 */ "typeCopyTree",              /* 21 */ "showInfo",
    /* 22 */ "invalidateGeometry",        /* 23 */ "invalidateSurfaces",        /* 24 */ "typeBackground",
};

const char* const vertexMapTypes_strings[2] = {
    /* 1 */ "fixedSize", /* 2 */ "grabMesh",
};

const char* const vertexMapOps_strings[4] = {
    /* 1 */ "show",       /* 2 */ "resize",     /* 3 */ "flush",      /* 4 */ "saveScript",
};

const char* const memCmds_strings[6] = {
    /* 1 */ "flush",       /* 2 */ "stats",       /* 3 */ "markerStats", /* 4 */ "markerSet",   /* 5 */ "show",
    /* 6 */ nullptr,
};

const char* const renderInfosStringFormat_strings[38] = {
    /*  1 */ "ver",        /*  2 */ "days",       /*  3 */ "hours",      /*  4 */ "mins",       /*  5 */ "secs",
    /*  6 */ "time",       /*  7 */ "file",       /*  8 */ "width",      /*  9 */ "height",     /* 10 */ "centisecs",
    /* 11 */ "sectime",    /* 12 */ "zant",       /* 13 */ "threads",    /* 14 */ "group",      /* 15 */ "ptime",
    /* 16 */ "build",      /* 17 */ "now",        /* 18 */ "prompt",     /* 19 */ nullptr,      /* 20 */ "fileFormat",
    /* 21 */ "compiler",   /* 22 */ "platform",   /* 23 */ "extension",  /* 24 */ "frame",      /* 25 */ "buffer",
    /* 26 */ "br",         /* 27 */ "arch",       /* 28 */ "busWidth",   /* 29 */ "endian",     /* 30 */ "score",
    /* 31 */ "nowStamp",   /* 32 */ "view",       /* 33 */ "dq",         /* 34 */ "cr",         /* 35 */ "lf",
    /* 36 */ "sq",         /* 37 */ "libraryDir", /* 38 */ "cpu",
};

}  // namespace Zant::Enums
// clang-format on
