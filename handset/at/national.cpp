#include "handset/at/national.h"

#include <algorithm>
#include <span>

#include "handset/at/alphabet.h"

namespace handset::at {
namespace {

constexpr std::uint8_t turkish = 1;
constexpr std::uint8_t spanish = 2;
constexpr std::uint8_t portuguese = 3;

constexpr std::u16string_view turkishTable =
    u"@£$¥€éùıòÇ\nĞğ\rÅå"
    u"Δ_ΦΓΛΩΠΨΣΘΞ\x1BŞşßÉ"
    u" !\"#¤%&'()*+,-./"
    u"0123456789:;<=>?"
    u"İABCDEFGHIJKLMNO"
    u"PQRSTUVWXYZÄÖÑÜ§"
    u"çabcdefghijklmno"
    u"pqrstuvwxyzäöñüà";
constexpr std::u16string_view portugueseTable =
    u"@£$¥êéúíóç\nÔô\rÁá"
    u"Δ_ªÇÀ∞^\\€Ó|\x1BÂâÊÉ"
    u" !\"#º%&'()*+,-./"
    u"0123456789:;<=>?"
    u"ÍABCDEFGHIJKLMNO"
    u"PQRSTUVWXYZÃÕÚÜ§"
    u"~abcdefghijklmno"
    u"pqrstuvwxyzãõ`üà";
static_assert(turkishTable.size() == 128 && turkishTable[escapeSeptet] == u'\x1B');
static_assert(portugueseTable.size() == 128 && portugueseTable[escapeSeptet] == u'\x1B');

// What each language adds to the default extension table.
constexpr Extension turkishExtensions[] = {{0x47, u'Ğ'}, {0x49, u'İ'}, {0x53, u'Ş'}, {0x63, u'ç'},
                                           {0x67, u'ğ'}, {0x69, u'ı'}, {0x73, u'ş'}};
constexpr Extension spanishExtensions[] = {{0x09, u'ç'}, {0x41, u'Á'}, {0x49, u'Í'},
                                           {0x4F, u'Ó'}, {0x55, u'Ú'}, {0x61, u'á'},
                                           {0x69, u'í'}, {0x6F, u'ó'}, {0x75, u'ú'}};
constexpr Extension portugueseExtensions[] = {
    {0x05, u'ê'}, {0x09, u'ç'}, {0x0B, u'Ô'}, {0x0C, u'ô'}, {0x0E, u'Á'}, {0x0F, u'á'}, {0x12, u'Φ'},
    {0x13, u'Γ'}, {0x15, u'Ω'}, {0x16, u'Π'}, {0x17, u'Ψ'}, {0x18, u'Σ'}, {0x19, u'Θ'}, {0x1F, u'Ê'},
    {0x41, u'À'}, {0x49, u'Í'}, {0x4F, u'Ó'}, {0x55, u'Ú'}, {0x5B, u'Ã'}, {0x5C, u'Õ'}, {0x61, u'Â'},
    {0x69, u'í'}, {0x6F, u'ó'}, {0x75, u'ú'}, {0x7B, u'ã'}, {0x7C, u'õ'}, {0x7F, u'â'}};

std::span<const Extension> extensionsOf(std::uint8_t language) {
  switch (language) {
    case turkish:
      return turkishExtensions;
    case spanish:
      return spanishExtensions;
    case portuguese:
      return portugueseExtensions;
    default:
      return {};
  }
}

}  // namespace

std::u16string_view lockingTable(std::uint8_t language) {
  return language == turkish ? turkishTable : language == portuguese ? portugueseTable : defaultTable;
}

char16_t singleShift(std::uint8_t language, std::uint8_t septet) {
  const std::span<const Extension> table = extensionsOf(language);
  const auto found = std::ranges::find(table, septet, &Extension::septet);
  return found == table.end() ? u'\0' : found->character;
}

}  // namespace handset::at
