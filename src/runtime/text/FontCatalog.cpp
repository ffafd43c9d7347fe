#include "runtime/text/FontCatalog.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace runtime {

namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using Objects = std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)>;
using FontSet = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;
using CharSet = std::unique_ptr<FcCharSet, decltype(&FcCharSetDestroy)>;

QString text(FcPattern* pattern, const char* object) {
  FcChar8* value = nullptr;
  if (FcPatternGetString(pattern, object, 0, &value) != FcResultMatch) return {};
  return QString::fromUtf8(reinterpret_cast<const char*>(value));
}

int number(FcPattern* pattern, const char* object, int otherwise) {
  double value = 0;
  if (FcPatternGetDouble(pattern, object, 0, &value) != FcResultMatch) return otherwise;
  return static_cast<int>(std::lround(value));
}

FontFace faceOf(FcPattern* pattern) {
  FontFace face;
  face.postScriptName = text(pattern, FC_POSTSCRIPT_NAME);
  face.family = text(pattern, FC_FAMILY);
  face.style = text(pattern, FC_STYLE);
  face.fullName = text(pattern, FC_FULLNAME);
  face.weight = FcWeightToOpenType(number(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR));
  face.stretch = number(pattern, FC_WIDTH, 100);
  face.italic = number(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
  return face;
}

QString folded(const QString& name) {
  return name.simplified().remove(QLatin1Char(' ')).toCaseFolded();
}

/// How far a face is from the plain one of its family.
int distanceFromRegular(const FontFace& face) {
  return std::abs(face.weight - 400) + (face.italic ? 2000 : 0) + 20 * std::abs(face.stretch - 100);
}

}  // namespace

const FontCatalog& FontCatalog::shared() {
  static const FontCatalog catalog;
  return catalog;
}

FontCatalog::FontCatalog() {
  if (!FcInit()) return;
  const Pattern all(FcPatternCreate(), FcPatternDestroy);
  const Objects objects(FcObjectSetBuild(FC_POSTSCRIPT_NAME, FC_FAMILY, FC_STYLE, FC_FULLNAME,
                                         FC_WEIGHT, FC_WIDTH, FC_SLANT, nullptr),
                        FcObjectSetDestroy);
  const FontSet fonts(FcFontList(nullptr, all.get(), objects.get()), FcFontSetDestroy);
  if (!fonts) return;
  for (int i = 0; i < fonts->nfont; ++i) m_faces.push_back(faceOf(fonts->fonts[i]));
  // The order of a listing is the file system's; which of two like faces is taken must not be.
  std::sort(m_faces.begin(), m_faces.end(), [](const FontFace& a, const FontFace& b) {
    return std::tie(a.family, a.postScriptName, a.style) <
           std::tie(b.family, b.postScriptName, b.style);
  });
  for (size_t i = 0; i < m_faces.size(); ++i) {
    const FontFace& face = m_faces[i];
    if (!face.postScriptName.isEmpty() && !m_byPostScriptName.contains(face.postScriptName))
      m_byPostScriptName.insert(face.postScriptName, i);
    const QString family = folded(face.family);
    const auto known = m_byFamily.find(family);
    if (known == m_byFamily.end() ||
        distanceFromRegular(face) < distanceFromRegular(m_faces[*known]))
      m_byFamily.insert(family, i);
  }
}

const FontFace* FontCatalog::find(const QString& name) const {
  if (const auto exact = m_byPostScriptName.constFind(name); exact != m_byPostScriptName.cend())
    return &m_faces[*exact];
  const QString key = folded(name);
  if (const auto family = m_byFamily.constFind(key); family != m_byFamily.cend())
    return &m_faces[*family];
  return findByWords(key);
}

const FontFace* FontCatalog::findByWords(const QString& key) const {
  const auto found = std::find_if(m_faces.begin(), m_faces.end(), [&key](const FontFace& face) {
    return folded(face.fullName) == key || folded(face.family + face.style) == key;
  });
  return key.isEmpty() || found == m_faces.end() ? nullptr : &*found;
}

bool FontCatalog::hasFamily(const QString& family) const {
  return m_byFamily.contains(folded(family));
}

bool FontCatalog::covers(const QString& family, char32_t character) const {
  const Pattern wanted(FcPatternCreate(), FcPatternDestroy);
  const CharSet characters(FcCharSetCreate(), FcCharSetDestroy);
  FcCharSetAddChar(characters.get(), character);
  FcPatternAddCharSet(wanted.get(), FC_CHARSET, characters.get());
  const QByteArray name = family.toUtf8();
  if (!family.isEmpty())
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.constData()));
  const Objects objects(FcObjectSetBuild(FC_FAMILY, nullptr), FcObjectSetDestroy);
  const FontSet fonts(FcFontList(nullptr, wanted.get(), objects.get()), FcFontSetDestroy);
  return fonts && fonts->nfont > 0;
}

}  // namespace runtime
