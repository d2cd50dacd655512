#pragma once

#include <windows.h>

#include <string>

#include "store/folders.h"
#include "store/write_result.h"

// How the person is told what became of files.
namespace list {

// A box with the program's title over the window in use; `style` as MessageBox takes it.
int showMessage(const std::string& text, UINT style = MB_OK);

// Why a change was not made; `failure` is the text for a change that failed, with the file and the reason.
std::string describe(const store::WriteResult& result, UINT failure);
// Shows that in a box, unless the change was made. Whether it was.
bool report(const store::WriteResult& result, UINT failure);

// Names what has been put aside since the last time; empty when nothing was.
std::string keptCopies(store::Folders& folders);

}  // namespace list
