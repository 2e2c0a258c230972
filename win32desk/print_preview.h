// The print preview (打印预览) of the Windows host: the report pane's pages
// as they would print, white sheets scaled to fit the window, one at a
// time, with 上一页, 下一页, 打印… and 关闭 (keys: Page Up, Page Down, the
// arrows, Home, End, Ctrl+P, Escape). The pages are laid out for the
// default printer when there is one, else on an A4 sheet against the
// screen; the window says which. Modal to its owner.
#pragma once

#include "zelkora/platform/text.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::win32desk {

// What the preview was left with.
enum class PreviewEnd { kClosed, kPrint };

// Shows the preview of `pane`'s text until it is closed.
PreviewEnd preview_pane(HWND pane, HWND owner);

// The pages of a preview window that is open (-1: `window` is none).
int preview_pages(HWND window);

}  // namespace zelkora::win32desk
