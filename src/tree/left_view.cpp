#include "tree/left_view.h"

#include <utility>

#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/columns.h"
#include "phonelink/handset_folders.h"
#include "resources/resource_ids.h"
#include "skin/settings.h"
#include "store/store_names.h"

namespace tree {
namespace {

constexpr int imageExtent = 55;

// The sections of the skin that name the tree's images, in the order of the image list.
constexpr const char* imageSections[] = {"Mobile", "PC", "MInbox", "MOutbox", "PInbox", "PSent", "PDraft"};

// An item's text and its place in the image list. Order and images are relied upon by findItems.
struct Item {
  UINT text;
  int image;
};
constexpr Item mobileItems[] = {{IDS_MOBILE, 0}, {IDS_MOBILE_INBOX, 2}, {IDS_MOBILE_OUTBOX, 3}};
constexpr Item pcItems[] = {{IDS_PC, 1}, {IDS_PC_INBOX, 4}, {IDS_PC_SENT, 5}, {IDS_PC_DRAFT, 6}};

UINT nameOf(store::Folder folder) {
  constexpr UINT names[] = {IDS_MOBILE_INBOX, IDS_MOBILE_OUTBOX, IDS_PC_INBOX, IDS_PC_SENT, IDS_PC_DRAFT};
  return names[store::position(folder)];
}

store::StoreFile openStore(const LeftViewServices& services, store::Folder folder) {
  const store::StoreName& name = store::storeName(folder);
  return {services.files, services.codePage, store::folderState().storePaths[store::position(folder)],
          name.section};
}

}  // namespace

CLeftView::CLeftView(LeftViewServices services, list::CQuilletView& list)
    : services_(std::move(services)),
      list_(list),
      stores_{openStore(services_, store::Folder::PInbox), openStore(services_, store::Folder::PSent),
              openStore(services_, store::Folder::PDraft)} {
  store::folderState().lastSelectedItem = nullptr;
  list_.connect(*this, *this);
}

const framework::MessageMap* CLeftView::messageMap() const {
  static constexpr framework::MessageEntry entries[] = {
      framework::onCreate<&CLeftView::onCreated>(),
      framework::onPlain<&CLeftView::onDestroyed>(WM_DESTROY),
      framework::onReflected<&CLeftView::onSelectionChanging, NMTREEVIEWW>(TVN_SELCHANGINGW),
      framework::onReflected<&CLeftView::onBeginDrag, NMTREEVIEWW>(TVN_BEGINDRAGW),
      framework::onMouse<&CLeftView::onMouseMove>(WM_MOUSEMOVE),
      framework::onMouse<&CLeftView::onLButtonUp>(WM_LBUTTONUP),
      framework::onReflected<&CLeftView::onClick>(static_cast<UINT>(NM_CLICK)),
  };
  static const framework::MessageMap map{entries, CTreeView::messageMap()};
  return &map;
}

void CLeftView::preCreateWindow(CREATESTRUCTW& c) {
  CTreeView::preCreateWindow(c);
  c.style |= TVS_HASBUTTONS | TVS_HASLINES | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS;
}

bool CLeftView::onCreated(const CREATESTRUCTW&) {
  if (defaultProcessing() == -1) return false;
  gdiplus_.emplace();
  loadImages();
  const auto insertGroup = [this](std::span<const Item> items) {
    const HTREEITEM group = insertItem(TVI_ROOT, framework::loadString(items[0].text), items[0].image);
    for (const Item& item : items.subspan(1)) insertItem(group, framework::loadString(item.text), item.image);
    expand(group);
  };
  insertGroup(mobileItems);
  insertGroup(pcItems);
  return true;
}

void CLeftView::loadImages() {
  images_.reset(ImageList_Create(imageExtent, imageExtent, ILC_COLOR16, 6, 1));
  const std::string folder = skin::skinFolder(services_.moduleDirectory);
  for (const char* section : imageSections) {
    std::string name;
    if (!skin::zl_GetSettingString(section, "image", skin::skinFile(services_.moduleDirectory), name))
      continue;
    const skin::CImage image(folder + name);
    if (const auto bitmap = image.toBitmap(RGB(255, 255, 255), {imageExtent, imageExtent}))
      ImageList_Add(images_.get(), bitmap.get(), nullptr);
  }
  TreeView_SetImageList(handle(), images_.get(), TVSIL_NORMAL);
}

void CLeftView::onDestroyed() {
  defaultProcessing();
  TreeView_SetImageList(handle(), nullptr, TVSIL_NORMAL);
  images_.reset();
  for (const store::Folder folder : store::allFolders) freeTable(folder);
  gdiplus_.reset();
}

void CLeftView::findItems() {
  store::FolderState& state = store::folderState();
  state.mobileGroup = nextItem(nullptr, TVGN_ROOT);
  selectItem(nextItem(state.mobileGroup, TVGN_CHILD));
  state.pcGroup = nextItem(state.mobileGroup, TVGN_NEXT);
  const auto walk = [&](HTREEITEM group, std::initializer_list<store::Folder> folders) {
    HTREEITEM item = nextItem(group, TVGN_CHILD);
    for (const store::Folder folder : folders) {
      state.items[store::position(folder)] = item;
      item = nextItem(item, TVGN_NEXT);
    }
  };
  walk(state.mobileGroup, {store::Folder::MInbox, store::Folder::MOutbox});
  walk(state.pcGroup, {store::Folder::PInbox, store::Folder::PSent, store::Folder::PDraft});
}

std::string CLeftView::itemPath(HTREEITEM item) const {
  std::string path;
  for (; item; item = nextItem(item, TVGN_PARENT)) {
    std::string text = itemText(item);
    if (!path.empty() && !text.ends_with('\\')) text += '\\';
    path = text + path;
  }
  return path;
}

int CLeftView::refreshCount(HTREEITEM item) {
  if (const auto folder = store::folderOfItem(store::folderState(), item)) reload(*folder);
  return 1;
}

int CLeftView::refreshCount(std::string_view path) {
  if (const auto folder = store::folderInPath(store::folderState(), path)) reload(*folder);
  return 1;
}

void CLeftView::reload(store::Folder folder) {
  store::FolderTable& table = tables_[folder];
  if (store::isOnHandset(folder)) {
    phonelink::readHandsetFolder(services_.link, folder, table);
  } else {
    table.clear();
    store::StoreFile& file = storeFile(folder);
    const store::ReadResult result = file.read(table);
    if (!(result.ok() && result.whole) && services_.reportUnread) services_.reportUnread(file, result);
  }
  setCount(folder);
}

void CLeftView::freeTable(store::Folder folder) {
  tables_[folder].clear();
  if (store::isOnPc(folder)) storeFile(folder).forget();
}

void CLeftView::setCount(store::Folder folder) {
  setItemText(store::folderState().items[store::position(folder)],
              framework::formatText(
                  "%s(%d)", {framework::loadString(nameOf(folder)), std::to_string(tables_[folder].size())}));
}

store::StoreFile& CLeftView::storeFile(store::Folder folder) {
  return stores_[store::position(folder) - store::position(store::Folder::PInbox)];
}

void CLeftView::showInList(store::Folder folder) {
  if (!tables_[folder].empty()) list_.showRecords(std::as_const(tables_)[folder].records());
}

void CLeftView::setColumnsFor(HTREEITEM item) {
  // The heading goes by the last selected item, which on platform 98 does not follow the selection.
  const store::FolderState& state = store::folderState();
  const auto headed = store::folderOfItem(state, state.lastSelectedItem);
  const UINT heading = headed && list::namesSender(*headed) ? IDS_SENDER : IDS_RECEIVER;
  list_.setPhoneHeading(framework::loadString(heading));
  const auto shown = store::folderOfItem(state, item);
  list_.setTimeColumnShown(!shown || list::showsTime(*shown));
}

LRESULT CLeftView::onSelectionChanging(NMTREEVIEWW& change) {
  store::FolderState& state = store::folderState();
  const HTREEITEM item = change.itemNew.hItem;
  list_.cancelDrag();
  state.selectedItem = item;
  if (!state.windows98Mode) state.lastSelectedItem = item;
  state.selectedPath = itemPath(item);
  if (store::isGroup(state, item)) {
    if (!state.windows98Mode) list_.deleteAllItems();
    return 0;
  }
  if (clickSelect_) setColumnsFor(item);
  const auto folder = store::selectedFolder(state);
  // Nothing is shown and nothing is to be, as while the program starts.
  if (list_.itemCount() == 0 && !(folder && !tables_[*folder].empty())) return 0;
  const framework::CWaitCursor wait;
  const framework::CRedrawLock lock(list_);
  list_.deleteAllItems();
  if (folder) showInList(*folder);
  return 0;
}

LRESULT CLeftView::onClick(NMHDR&) {
  clickSelect_ = true;
  return 0;
}

}  // namespace tree
