#include "framework/linked_font.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "framework/handles.h"

namespace framework {
namespace {

// Of the font that really draws; a dialog's font is often another's substitute.
std::wstring familyOf(HDC dc) {
  std::vector<std::byte> bytes(GetOutlineTextMetricsW(dc, 0, nullptr));
  auto* const metrics = reinterpret_cast<OUTLINETEXTMETRICW*>(bytes.data());
  if (bytes.empty() || !GetOutlineTextMetricsW(dc, static_cast<UINT>(bytes.size()), metrics)) {
    wchar_t face[LF_FACESIZE] = L"";  // one of bitmaps
    GetTextFaceW(dc, LF_FACESIZE, face);
    return face;
  }
  // The member holds an offset in spite of its type.
  return reinterpret_cast<const wchar_t*>(bytes.data() +
                                          reinterpret_cast<std::size_t>(metrics->otmpFamilyName));
}

// From lines like "FILE.TTC,Face" or "FILE.TTC,Face,128,96".
std::vector<std::wstring> linkedFaces(const std::wstring& family) {
  constexpr wchar_t key[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\FontLink\\SystemLink";
  wchar_t lines[4096] = L"";
  DWORD size = sizeof lines;
  std::vector<std::wstring> faces;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, key, family.c_str(), RRF_RT_REG_MULTI_SZ, nullptr, lines, &size) !=
      ERROR_SUCCESS)
    return faces;
  for (const wchar_t* line = lines; *line; line += wcslen(line) + 1) {
    const std::wstring_view all = line;
    const std::size_t comma = all.find(L',');
    if (comma == all.npos) continue;
    const std::wstring_view rest = all.substr(comma + 1);
    faces.emplace_back(rest.substr(0, rest.find(L',')));
  }
  return faces;
}

auto missing(HDC dc, std::wstring_view text) {
  std::vector<WORD> glyphs(text.size());
  GetGlyphIndicesW(dc, text.data(), static_cast<int>(text.size()), glyphs.data(),
                   GGI_MARK_NONEXISTING_GLYPHS);
  return std::ranges::count(glyphs, WORD{0xFFFF});
}

}  // namespace

std::wstring faceFor(HFONT font, std::wstring_view text) {
  const UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
  const HGDIOBJ former = SelectObject(dc.get(), font);
  std::wstring best = familyOf(dc.get());
  auto least = missing(dc.get(), text);
  LOGFONTW description{};
  GetObjectW(font, sizeof description, &description);
  for (const std::wstring& face : least > 0 ? linkedFaces(best) : std::vector<std::wstring>{}) {
    lstrcpynW(description.lfFaceName, face.c_str(), LF_FACESIZE);
    const UniqueFont linked(CreateFontIndirectW(&description));
    SelectObject(dc.get(), linked.get());
    if (const auto lacking = missing(dc.get(), text); lacking < least) {
      least = lacking;
      best = face;
    }
    SelectObject(dc.get(), former);
  }
  SelectObject(dc.get(), former);
  return best;
}

}  // namespace framework
