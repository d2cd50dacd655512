#include "tree/left_view.h"

#include <algorithm>
#include <new>
#include <utility>

#include "framework/input_lock.h"
#include "framework/module.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wait_cursor.h"
#include "list/reports.h"
#include "phonelink/handset_folders.h"
#include "resources/resource_ids.h"
#include "skin/settings.h"

namespace tree {
namespace {

constexpr int imageExtent = 55;

}  // namespace

CLeftView::CLeftView(LeftViewServices services, list::CQuilletView& list)
    : services_(std::move(services)),
      list_(list),
      folders_(services_.files, services_.codePage, services_.moduleDirectory) {
  store::folderState().lastSelectedItem = nullptr;
  list_.connect(folders_, *this);
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
      framework::onReflected<&CLeftView::onRightClick>(static_cast<UINT>(NM_RCLICK)),
      framework::onPlain<&CLeftView::onContextMenu>(WM_CONTEXTMENU),
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
  setText(framework::loadString(IDS_FOLDERS));
  gdiplus_.emplace();
  loadImages();
  // The places of the items are relied upon by findItems. The groups' images stand before those of the
  // folders.
  int image = static_cast<int>(store::groupRows.size());
  for (const store::GroupRow& group : store::groupRows) {
    const HTREEITEM parent = insertItem(TVI_ROOT, framework::loadString(group.text),
                                        static_cast<int>(store::position(group.group)));
    for (const store::FolderRow& row : store::folderRows)
      if (row.group == group.group) insertItem(parent, framework::loadString(row.text), image++);
    expand(parent);
  }
  return true;
}

int CLeftView::wantedWidth() const {
  LONG widest = 0;
  for (HTREEITEM item = TreeView_GetRoot(handle()); item; item = nextItem(item, TVGN_NEXTVISIBLE)) {
    RECT label{};
    if (TreeView_GetItemRect(handle(), item, &label, TRUE)) widest = std::max(widest, label.right);
  }
  return static_cast<int>(widest + framework::textSize(handle(), L"(9999)").cx);
}

void CLeftView::loadImages() {
  images_.reset(ImageList_Create(imageExtent, imageExtent, ILC_COLOR16, 6, 1));
  const std::string folder = skin::skinFolder(services_.moduleDirectory);
  const auto add = [&](std::string_view section) {
    std::string name;
    if (!skin::zl_GetSettingString(section, "image", skin::skinFile(services_.moduleDirectory), name)) return;
    const skin::CImage image(folder + name);
    if (const auto bitmap = image.toBitmap(RGB(255, 255, 255), {imageExtent, imageExtent}))
      ImageList_Add(images_.get(), bitmap.get(), nullptr);
  };
  for (const store::GroupRow& row : store::groupRows) add(row.imageSection);
  for (const store::FolderRow& row : store::folderRows) add(row.imageSection);
  TreeView_SetImageList(handle(), images_.get(), TVSIL_NORMAL);
}

void CLeftView::onDestroyed() {
  defaultProcessing();
  TreeView_SetImageList(handle(), nullptr, TVSIL_NORMAL);
  images_.reset();
  for (const store::FolderRow& row : store::folderRows) folders_.clear(row.folder);
  gdiplus_.reset();
}

void CLeftView::findItems() {
  store::FolderState& state = store::folderState();
  HTREEITEM parent = nextItem(nullptr, TVGN_ROOT);
  selectItem(nextItem(parent, TVGN_CHILD));
  for (const store::GroupRow& group : store::groupRows) {
    state.groups[store::position(group.group)] = parent;
    HTREEITEM item = nextItem(parent, TVGN_CHILD);
    for (const store::FolderRow& row : store::folderRows) {
      if (row.group != group.group) continue;
      state.items[store::position(row.folder)] = item;
      item = nextItem(item, TVGN_NEXT);
    }
    parent = nextItem(parent, TVGN_NEXT);
  }
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
  if (!store::isOnPc(folder)) {
    const framework::CInputLock lock;
    folders_.fill(folder, phonelink::readHandsetFolder(services_.link, folder));
    const std::string why = services_.link.takeReadProblem();
    incomplete_[store::position(folder)] = !why.empty();
    if (!why.empty())
      notes_ += framework::formatText(framework::loadString(IDS_INCOMPLETE),
                                      {store::folderState().folderPaths[store::position(folder)], why}) +
                " ";
    showCount(folder);
    return;
  }
  const store::ReadResult read = folders_.reload(folder);
  unreadable_[store::position(folder)] = !read.ok();
  if (!read.ok()) {
    list::showMessage(
        framework::formatText(framework::loadString(IDS_CANNOT_READ),
                              {folders_.path(folder), framework::systemErrorText(read.status.code)}),
        MB_ICONWARNING);
  } else if (!read.lossless) {
    notes_ +=
        framework::formatText(framework::loadString(IDS_PARTLY_READ), {store::rowOf(folder).file}) + " ";
  }
  showCount(folder);
}

void CLeftView::reloadFiled() try {
  const auto selected = store::selectedFolder(store::folderState());
  for (const store::Folder folder : {store::Folder::PSent, store::Folder::PDraft}) {
    if (selected == folder) list_.empty();
    reload(folder);
    if (selected == folder) showSelected();
  }
  if (const std::string left = takeNotes(); !left.empty()) showStatus(left);
} catch (const std::bad_alloc&) {
  framework::reportOutOfMemory();  // what has been filed must not be filed again for that
}

void CLeftView::showCount(store::Folder folder) {
  std::string text = framework::loadString(store::rowOf(folder).text);
  if (!isUnreadable(folder)) text += "(" + std::to_string(folders_[folder].size()) + ")";
  setItemText(store::folderState().items[store::position(folder)], text);
}

void CLeftView::showSelected() {
  if (const auto folder = store::selectedFolder(store::folderState())) list_.show(*folder);
}

void CLeftView::showFolder(store::Folder folder) {
  selectItem(store::folderState().items[store::position(folder)]);
  if (list_.shownFolder() != folder) showSelected();
}

std::string CLeftView::takeNotes() {
  return std::exchange(notes_, {}) + list::keptCopies(folders_);
}

void CLeftView::setColumnsFor(HTREEITEM item) {
  // The heading goes by the last selected item, which on platform 98 does not follow the selection.
  const store::FolderState& state = store::folderState();
  const auto headed = store::folderOfItem(state, state.lastSelectedItem);
  const UINT heading = headed && store::rowOf(*headed).received ? IDS_SENDER : IDS_RECEIVER;
  list_.setPhoneHeading(framework::loadString(heading));
  const auto shown = store::folderOfItem(state, item);
  list_.setTimeColumnShown(!shown || store::rowOf(*shown).timed);
}

LRESULT CLeftView::onSelectionChanging(NMTREEVIEWW& change) {
  store::FolderState& state = store::folderState();
  const HTREEITEM item = change.itemNew.hItem;
  list_.cancelDrag();
  state.selectedItem = item;
  if (!state.windows98Mode) state.lastSelectedItem = item;
  state.selectedPath = itemPath(item);
  if (store::isGroup(state, item)) {
    if (!state.windows98Mode) list_.empty();
    return 0;
  }
  if (clickSelect_) setColumnsFor(item);
  const framework::CWaitCursor wait;
  list_.empty();
  showSelected();
  return 0;
}

LRESULT CLeftView::onClick(NMHDR&) {
  clickSelect_ = true;
  return 0;
}

}  // namespace tree
