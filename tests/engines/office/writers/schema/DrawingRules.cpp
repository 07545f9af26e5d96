#include "engines/office/writers/schema/SchemaRules.h"

namespace TarnixTools::engines::office {

namespace {

// ECMA-376 part 1, 20.1, 20.2 and 20.4, and part 3 for alternatives.
constexpr ElementRule kDrawings[] = {
    {"mc:AlternateContent", "mc:Choice", ""},
    {"mc:Choice", "w:drawing", "Requires=wps"},
    {"w:drawing", "(wp:inline|wp:anchor)", ""},
    {"wp:inline", "wp:extent wp:docPr wp:cNvGraphicFramePr a:graphic",
     "distT=0 distB=0 distL=0 distR=0"},
    {"wp:anchor",
     "wp:simplePos wp:positionH wp:positionV wp:extent wp:effectExtent wp:wrapNone wp:docPr "
     "wp:cNvGraphicFramePr a:graphic",
     "distT=0 distB=0 distL=0 distR=0 simplePos=0 relativeHeight=0..4294967295 behindDoc=0|1 "
     "locked=0 layoutInCell=1 allowOverlap=1"},
    {"wp:simplePos", "", "x=0 y=0"},
    {"wp:positionH", "wp:posOffset", "relativeFrom=page"},
    {"wp:positionV", "wp:posOffset", "relativeFrom=page"},
    {"wp:posOffset", "#text", ""},
    {"wp:extent", "", "cx=1..27273042316900 cy=1..27273042316900"},
    {"wp:effectExtent", "", "l=0 t=0 r=0 b=0"},
    {"wp:wrapNone", "", ""},
    {"wp:docPr", "", "id=1..4294967295 name=text descr?=text"},
    {"wp:cNvGraphicFramePr", "", ""},
    {"a:graphic", "a:graphicData", ""},
    {"a:graphicData", "(pic:pic|wps:wsp|a:tbl)",
     "uri=http://schemas.openxmlformats.org/drawingml/2006/picture|"
     "http://schemas.microsoft.com/office/word/2010/wordprocessingShape|"
     "http://schemas.openxmlformats.org/drawingml/2006/table"},

    {"pic:pic", "pic:nvPicPr pic:blipFill pic:spPr", ""},
    {"pic:nvPicPr", "pic:cNvPr pic:cNvPicPr", ""},
    {"pic:cNvPr", "", "id=0..4294967295 name=text"},
    {"pic:cNvPicPr", "", ""},
    {"pic:blipFill", "a:blip a:stretch", ""},
    {"pic:spPr", "a:xfrm a:prstGeom", ""},
    {"a:blip", "", "r:embed=id"},
    {"a:stretch", "a:fillRect", ""},
    {"a:fillRect", "", ""},

    {"wps:wsp", "wps:cNvSpPr wps:spPr wps:txbx? wps:bodyPr", ""},
    {"wps:cNvSpPr", "", "txBox?=1"},
    {"wps:spPr", "a:xfrm a:prstGeom (a:noFill|a:solidFill) a:ln?", ""},
    {"wps:txbx", "w:txbxContent", ""},
    {"wps:bodyPr", "",
     "vert?=horz|vert|vert270|eaVert wrap?=square lIns?=0 tIns?=0 rIns?=0 bIns?=0 anchor?=t"},

    {"a:xfrm", "a:off a:ext", "rot?=-21600000..21600000 flipV?=1"},
    {"a:off", "", "x=-27273042329600..27273042316900 y=-27273042329600..27273042316900"},
    {"a:ext", "", "cx=0..27273042316900 cy=0..27273042316900"},
    {"a:prstGeom", "a:avLst", "prst=rect|line"},
    {"a:avLst", "", ""},
    {"a:noFill", "", ""},
    {"a:solidFill", "(a:srgbClr|a:schemeClr)", ""},
    {"a:srgbClr", "a:alpha?", "val=hex6"},
    {"a:schemeClr", "", "val=phClr"},
    {"a:alpha", "", "val=0..100000"},
    {"a:ln", "(a:noFill|a:solidFill)", "w?=0..20116800"},
};

}  // namespace

std::span<const ElementRule> DrawingRules() {
  return kDrawings;
}

}  // namespace TarnixTools::engines::office
