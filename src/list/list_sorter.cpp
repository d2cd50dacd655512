#include "list/list_sorter.h"

#include "framework/text.h"
#include "list/list_state.h"
#include "store/leading_number.h"

namespace list {
namespace {

TextRules systemTextRules() {
  return {[](std::string_view text) {
            std::wstring wide = framework::toWide(text);
            CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
            return framework::toUtf8(wide);
          },
          [](std::string_view text) -> std::optional<std::string> {
            std::string bytes;
            if (!framework::toAnsi(framework::toWide(text), bytes)) return std::nullopt;
            return bytes;
          }};
}

std::vector<std::string> columnTexts(const framework::CListView& list, int column) {
  std::vector<std::string> texts;
  for (int row = 0; row < list.itemCount(); ++row) texts.push_back(list.itemText(row, column));
  return texts;
}

}  // namespace

ListSorter::ListSorter(framework::CListView& list, int column, std::string_view kind) : list_(list) {
  listState().SortKind = kind;
  const std::vector<std::string> texts = columnTexts(list, column);
  if (kind == textKind) {
    texts_.resize(texts.size());
    std::vector<std::string> keys = textSortKeys(texts, systemTextRules());
    for (std::size_t row = 0; row < texts.size(); ++row) texts_[row].text = std::move(keys[row]);
    lendKeys(texts_);
  } else if (kind == dateKind) {
    dates_.resize(texts.size());
    for (std::size_t row = 0; row < texts.size(); ++row) dates_[row].value = dateValue(texts[row]);
    lendKeys(dates_);
  } else if (kind == numberKind) {
    numbers_.resize(texts.size());
    for (std::size_t row = 0; row < texts.size(); ++row)
      numbers_[row].value = store::leadingNumber(texts[row]);
    lendKeys(numbers_);
  }
}

ListSorter::~ListSorter() {
  if (texts_.empty() && dates_.empty() && numbers_.empty()) return;
  for (int row = 0; row < list_.itemCount(); ++row)
    list_.setItemData(row, reinterpret_cast<const RowKey*>(list_.itemData(row))->ownData);
}

template <class Key>
void ListSorter::lendKeys(std::vector<Key>& keys) {
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const int row = static_cast<int>(i);
    keys[i].row = row;
    keys[i].ownData = list_.itemData(row);
    list_.setItemData(row, reinterpret_cast<LPARAM>(static_cast<RowKey*>(&keys[i])));
  }
}

template <class Key>
void ListSorter::sortBy() {
  const auto compare = [](LPARAM a, LPARAM b, LPARAM) -> int {
    const auto keyOf = [](LPARAM data) -> const Key& {
      return static_cast<const Key&>(*reinterpret_cast<const RowKey*>(data));
    };
    return compareKeys(keyOf(a), keyOf(b));
  };
  ListView_SortItems(list_.handle(), static_cast<PFNLVCOMPARE>(compare), 0);
}

void ListSorter::sort() {
  ListState& state = listState();
  if (state.SortKind == textKind) return sortBy<TextSortKey>();
  if (state.SortKind == dateKind) return sortBy<DateSortKey>();
  if (!numbers_.empty()) return sortBy<NumberSortKey>();
  // A column without a kind is sorted by the rows' own data, as numbers.
  state.SortKind = numberKind;
  const auto compare = [](LPARAM a, LPARAM b, LPARAM) -> int { return a == b ? 0 : (a > b ? 1 : -1); };
  ListView_SortItems(list_.handle(), static_cast<PFNLVCOMPARE>(compare), 0);
}

}  // namespace list
