#include "control_report.h"

#include <commctrl.h>

#include <cstring>
#include <functional>

#include "foreign_window.h"
#include "json.h"

namespace {

using json::Fields;

// Calls `visit` for the tree's items from top to bottom.
void eachTreeItem(HWND tree, const std::function<void(HTREEITEM, int level)>& visit) {
  const auto next = [tree](UINT which, HTREEITEM from) {
    return reinterpret_cast<HTREEITEM>(ask(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(from)));
  };
  const std::function<void(HTREEITEM, int)> walk = [&](HTREEITEM item, int level) {
    for (; item; item = next(TVGN_NEXT, item)) {
      visit(item, level);
      walk(next(TVGN_CHILD, item), level + 1);
    }
  };
  walk(next(TVGN_ROOT, nullptr), 0);
}

TVITEMW treeItem(HWND tree, HTREEITEM handle, ForeignMemory& memory) {
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_STATE | TVIF_IMAGE;
  item.hItem = handle;
  item.stateMask = static_cast<UINT>(~0);
  item.pszText = memory.textAddress();
  item.cchTextMax = ForeignMemory::textUnits;
  memory.clearText();
  memory.put(item);
  ask(tree, TVM_GETITEMW, 0, memory.address());
  return memory.get<TVITEMW>();
}

// The rectangle that `message` reports, in screen coordinates; "null" for what is scrolled away.
std::string askedRectangle(HWND control, UINT message, WPARAM wParam, RECT input, ForeignMemory& memory) {
  memory.put(input);
  if (!ask(control, message, wParam, memory.address())) return "null";
  return json::rectangle(onScreen(control, memory.get<RECT>()));
}

std::string treeItems(HWND tree) {
  ForeignMemory memory(tree);
  std::vector<std::string> items;
  eachTreeItem(tree, [&](HTREEITEM handle, int level) {
    const TVITEMW item = treeItem(tree, handle, memory);
    const std::wstring text = memory.text();
    RECT input{};  // begins with the item's handle
    std::memcpy(&input, &handle, sizeof(handle));
    items.push_back(json::object({{"level", json::number(level)},
                                  {"text", json::text(text)},
                                  {"selected", json::flag(item.state & TVIS_SELECTED)},
                                  {"expanded", json::flag(item.state & TVIS_EXPANDED)},
                                  {"drop_target", json::flag(item.state & TVIS_DROPHILITED)},
                                  {"image", json::number(item.iImage)},
                                  {"rect", askedRectangle(tree, TVM_GETITEMRECT, TRUE, input, memory)}}));
  });
  return json::list(items);
}

const wchar_t* alignmentName(int format) {
  switch (format & LVCFMT_JUSTIFYMASK) {
    case LVCFMT_RIGHT:
      return L"right";
    case LVCFMT_CENTER:
      return L"center";
    default:
      return L"left";
  }
}

WPARAM columnCount(HWND list) {
  const HWND header = reinterpret_cast<HWND>(ask(list, LVM_GETHEADER));
  return header ? static_cast<WPARAM>(ask(header, HDM_GETITEMCOUNT)) : 0;
}

std::string listColumns(HWND list) {
  ForeignMemory memory(list);
  const HWND header = reinterpret_cast<HWND>(ask(list, LVM_GETHEADER));
  std::vector<std::string> columns;
  for (WPARAM i = 0, count = columnCount(list); i < count; ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = memory.textAddress();
    column.cchTextMax = ForeignMemory::textUnits;
    memory.clearText();
    memory.put(column);
    ask(list, LVM_GETCOLUMNW, i, memory.address());
    column = memory.get<LVCOLUMNW>();
    const std::wstring title = memory.text();
    columns.push_back(json::object({{"title", json::text(title)},
                                    {"width", json::number(column.cx)},
                                    {"alignment", json::text(alignmentName(column.fmt))},
                                    {"rect", askedRectangle(header, HDM_GETITEMRECT, i, {}, memory)}}));
  }
  return json::list(columns);
}

std::string listRows(HWND list) {
  ForeignMemory memory(list);
  const WPARAM columns = columnCount(list);
  const LRESULT first = ask(list, LVM_GETTOPINDEX);
  const LRESULT last = first + ask(list, LVM_GETCOUNTPERPAGE);
  std::vector<std::string> rows;
  for (LRESULT row = 0, count = ask(list, LVM_GETITEMCOUNT); row < count; ++row) {
    std::vector<std::string> texts;
    for (WPARAM column = 0; column < columns; ++column) {
      LVITEMW item{};
      item.iSubItem = static_cast<int>(column);
      item.pszText = memory.textAddress();
      item.cchTextMax = ForeignMemory::textUnits;
      memory.clearText();
      memory.put(item);
      ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), memory.address());
      texts.push_back(json::text(memory.text()));
    }
    const LRESULT state = ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED | LVIS_FOCUSED);
    RECT input{};
    input.left = LVIR_BOUNDS;
    const bool inView = row >= first && row <= last;
    rows.push_back(json::object(
        {{"texts", json::list(texts)},
         {"selected", json::flag(state & LVIS_SELECTED)},
         {"focused", json::flag(state & LVIS_FOCUSED)},
         {"rect", inView ? askedRectangle(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), input, memory)
                         : "null"}}));
  }
  return json::list(rows);
}

std::string toolbarButtons(HWND toolbar) {
  ForeignMemory memory(toolbar);
  std::vector<std::string> buttons;
  for (WPARAM i = 0, count = static_cast<WPARAM>(ask(toolbar, TB_BUTTONCOUNT)); i < count; ++i) {
    ask(toolbar, TB_GETBUTTON, i, memory.address());
    const TBBUTTON button = memory.get<TBBUTTON>();
    buttons.push_back(json::object({{"command", json::number(button.idCommand)},
                                    {"enabled", json::flag(button.fsState & TBSTATE_ENABLED)},
                                    {"image", json::number(button.iBitmap)},
                                    {"rect", askedRectangle(toolbar, TB_GETITEMRECT, i, {}, memory)}}));
  }
  return json::list(buttons);
}

std::string statusParts(HWND bar) {
  ForeignMemory memory(bar);
  std::vector<std::string> parts;
  for (WPARAM i = 0, count = static_cast<WPARAM>(ask(bar, SB_GETPARTS)); i < count; ++i) {
    memory.clearText();
    ask(bar, SB_GETTEXTW, i, reinterpret_cast<LPARAM>(memory.textAddress()));
    parts.push_back(json::text(memory.text()));
  }
  return json::list(parts);
}

std::string comboChoices(HWND combo) {
  std::vector<std::string> choices;
  for (LRESULT i = 0, count = ask(combo, CB_GETCOUNT); i < count; ++i) {
    // The system carries this control's texts across by itself.
    const LRESULT length = ask(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(i));
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    ask(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    choices.push_back(json::text(text));
  }
  return json::list(choices);
}

bool hasStyle(HWND control, LONG_PTR style) {
  return (GetWindowLongPtrW(control, GWL_STYLE) & style) == style;
}

}  // namespace

std::string controlReport(HWND control, const InputOwners& input) {
  RECT rectangle{};
  RECT client{};
  GetWindowRect(control, &rectangle);
  GetClientRect(control, &client);
  const std::wstring name = classOf(control);
  Fields fields = {{"class", json::text(name)},
                   {"id", json::number(GetDlgCtrlID(control))},
                   {"text", json::text(textOf(control))},
                   {"enabled", json::flag(IsWindowEnabled(control))},
                   {"focused", json::flag(control == input.focus)},
                   {"captured", json::flag(control == input.capture)},
                   {"rect", json::rectangle(rectangle)},
                   {"client", json::rectangle(onScreen(control, client))}};
  if (name == WC_TREEVIEWW) {
    fields.emplace_back("items", treeItems(control));
  } else if (name == WC_LISTVIEWW) {
    fields.emplace_back("columns", listColumns(control));
    fields.emplace_back("rows", listRows(control));
    fields.emplace_back("sideways", json::flag(hasStyle(control, WS_HSCROLL)));
  } else if (name == TOOLBARCLASSNAMEW) {
    fields.emplace_back("buttons", toolbarButtons(control));
  } else if (name == STATUSCLASSNAMEW) {
    fields.emplace_back("parts", statusParts(control));
  } else if (name == WC_BUTTONW) {
    fields.emplace_back("default", json::flag(ask(control, WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON));
  } else if (name == WC_COMBOBOXW) {
    fields.emplace_back("choices", comboChoices(control));
    fields.emplace_back("chosen", json::number(ask(control, CB_GETCURSEL)));
    fields.emplace_back("dropped", json::flag(ask(control, CB_GETDROPPEDSTATE)));
  } else if (name == WC_EDITW || name == L"RichEdit20W") {
    fields.emplace_back("read_only", json::flag(hasStyle(control, ES_READONLY)));
    fields.emplace_back("limit", json::number(ask(control, EM_GETLIMITTEXT)));
  }
  return json::object(fields);
}
