#pragma once

#include <QString>
#include <string_view>

#include "../support/process_object.h"

namespace ztcad {

/// The element names, attribute names and fixed words of the format, each spelled here and nowhere else.
///
/// The strings are on the heap, not in the library's read-only data: a host may keep a copy after the library
/// is unloaded.
struct Vocabulary {
  const QString gmd{QLatin1String("GMD")};
  const QString header{QLatin1String("header")};

  // elements
  const QString point{QLatin1String("point")};
  const QString templatePoint{QLatin1String("templatePoint")};
  const QString line{QLatin1String("line")};
  const QString templateLine{QLatin1String("templateLine")};
  const QString solid{QLatin1String("solid")};
  const QString templateSolid{QLatin1String("templateSolid")};
  const QString elementMip{QLatin1String("elementMIP")};
  const QString templateElementMip{QLatin1String("templateElementMIP")};
  const QString pointRef{QLatin1String("pointRef")};
  const QString lineRef{QLatin1String("lineRef")};
  const QString solidRef{QLatin1String("solidRef")};
  const QString elementMipRef{QLatin1String("elementMipRef")};
  const QString detailRef{QLatin1String("detailRef")};
  const QString structureRef{QLatin1String("structureRef")};
  const QString structure{QLatin1String("structure")};
  const QString templateStructure{QLatin1String("template_structure")};
  const QString detail{QLatin1String("detail")};
  const QString templateDetail{QLatin1String("template_detail")};
  const QString vertices{QLatin1String("vertices")};
  const QString faces{QLatin1String("faces")};

  // attributes
  const QString name{QLatin1String("name")};
  const QString comment{QLatin1String("comment")};
  const QString inform{QLatin1String("inform")};
  const QString method{QLatin1String("method")};
  const QString color{QLatin1String("color")};
  const QString visible{QLatin1String("visible")};
  const QString center{QLatin1String("center")};
  const QString radius{QLatin1String("radius")};
  const QString mip{QLatin1String("MIP")};
  const QString lcs{QLatin1String("LCS")};
  const QString mcs{QLatin1String("MCS")};
  const QString templateName{QLatin1String("template")};
  const QString file{QLatin1String("file")};
  const QString majorVersion{QLatin1String("majorVersion")};
  const QString minorVersion{QLatin1String("minorVersion")};
  const QString producerName{QLatin1String("producerName")};
  const QString producerVersion{QLatin1String("producerVersion")};
  const QString producerPlatform{QLatin1String("producerPlatform")};

  // values of "method"; "MIP" is one of them too
  const QString pointXyz{QLatin1String("pointXYZ")};
  const QString polyline{QLatin1String("polyline")};
  const QString triangulation{QLatin1String("triangulation")};
  const QString sphere{QLatin1String("sphere")};

  // values of "visible"
  const QString trueWord{QLatin1String("true")};
  const QString falseWord{QLatin1String("false")};

  // first parts of "color" and of coordinate systems
  const QString rgb{QLatin1String("RGB")};
  const QString cs{QLatin1String("CS")};

  // words of the diagnostic form
  const QString coord{QLatin1String("coord")};
  const QString facet{QLatin1String("facet")};
  const QString arche{QLatin1String("arche")};
  const QString noValue{QLatin1String("no Value")};
  const QString documentText{QLatin1String("ztCAD_GMD ")};

  /// Separates a name from the number that makes it unique. Only names that contain it are handed out.
  static constexpr std::string_view nameSeparator = "_$";

  // the XML declaration of every document
  const QString xml{QLatin1String("xml")};
  const QString xmlDeclaration{QLatin1String("version=\"1.0\" encoding=\"windows-1251\"")};
};

/// For `words` only, which is inline because every element calls it many times.
extern ProcessObject<Vocabulary> vocabulary;

inline const Vocabulary& words() { return vocabulary.get(); }
/// Part of the unload step.
void releaseWords();

}  // namespace ztcad
