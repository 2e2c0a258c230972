// A rich-edit control's text laid out into pages, as printing and its
// preview both see them: pages of a given size in twips with an inch of
// margin on each side, the text formatted for a target device (a printer's
// DC, or the screen's for a page that is not a printer's), each page the
// characters that fit on it (EM_FORMATRANGE). Where the control lays out
// no pages (Wine 8: its EM_FORMATRANGE is a stub), a hidden copy of it as
// wide as the page's text lays its lines out on the screen instead and
// each page is drawn as that copy draws itself.
//
//   const std::vector<CHARRANGE> pages = win32::lay_out_pages(edit, printer, size);
//   for (const CHARRANGE& chars : pages) {
//     ::StartPage(printer);
//     win32::draw_page(edit, printer, printer, size, chars);
//     ::EndPage(printer);
//   }
#pragma once

#include <vector>

#include "zelkora/platform/win32/windows_api.h"  // before the system's other headers

#include <richedit.h>

namespace zelkora::platform::win32 {

// An A4 sheet (210 × 297 mm) in twips.
constexpr SIZE kA4Twips{11906, 16838};

// The page of a device context (a printer's) in twips.
SIZE page_twips(HDC dc);

// The characters of each page, in order: contiguous, from the first
// character to the last. No page for an empty text, nor when a page holds
// no line.
std::vector<CHARRANGE> lay_out_pages(HWND edit, HDC target, SIZE page);

// Draws `chars` (a page of lay_out_pages) on `dc`, the page's top left at
// the origin of `dc`'s logical units, formatted for `target`.
void draw_page(HWND edit, HDC dc, HDC target, SIZE page, CHARRANGE chars);

// The page drawn into an enhanced metafile (the caller deletes it), its
// frame the page: played into a rectangle of any size, it scales.
HENHMETAFILE page_metafile(HWND edit, HDC target, SIZE page, CHARRANGE chars);

}  // namespace zelkora::platform::win32
