// A document::Figure (a vector drawing in mm, report_document.h) painted
// with GDI, and a child window that shows one: the Windows counterpart of
// desk/figure_painter.h, placed by the same rule
// (document/figure_placement.h): the figure kept in proportion and centred
// in the area, its caption under the drawing.
//
//   paint_figure(dc, RECT{0, 0, 320, 260}, figure, {{0x000000, 0xFFFFFF}});
//   FigureView view(parent, u"输入截面尺寸后显示截面图", colour_rule);
//   view.set_figure(figure);
//
// A colour map turns the figure's colours (0xRRGGBB, black on white, for
// files) into the screen's; colours not in it stay. Any figure paints
// without harm: points that are not numbers, shapes with too few points and
// absurd sizes are passed over; nothing is drawn outside the area.
#pragma once

#include <functional>
#include <map>

#include "zelkora/document/report_document.h"
#include "zelkora/platform/text.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::win32desk {

// The figure's colour → the screen's, both 0xRRGGBB.
using FigureColours = std::map<document::Colour, document::Colour>;

// Paints the figure into `area` of the device, on what it already shows
// there. Text is in `face` (the message font's without one).
void paint_figure(HDC dc, const RECT& area, const document::Figure& figure,
                  const FigureColours& colours = {}, const wchar_t* face = nullptr);

// The system colour `index` (COLOR_WINDOW, ...) as 0xRRGGBB.
document::Colour system_colour(int index);

// A child window showing a figure on the window colour of the user's scheme
// (high contrast included), or `hint` centred in the grey of disabled text
// when the figure has nothing to place. The colour rule gives the figure's
// colours for the ground and ink (COLOR_WINDOW, COLOR_WINDOWTEXT) at each
// paint; without one only black turns into the ink.
class FigureView {
 public:
  using ColourRule = std::function<FigureColours(document::Colour ground, document::Colour ink)>;

  FigureView(HWND parent, Text hint, ColourRule rule = {});
  FigureView(const FigureView&) = delete;
  FigureView& operator=(const FigureView&) = delete;
  ~FigureView();

  HWND hwnd() const { return hwnd_; }
  // Shows `figure` (its caption the window's text, for screen readers).
  void set_figure(document::Figure figure);
  const document::Figure& figure() const { return figure_; }
  // The view's client area painted on `dc`: the ground, then the figure or
  // the hint.
  void paint(HDC dc);

 private:
  static LRESULT CALLBACK message(HWND window, UINT message, WPARAM w, LPARAM l);

  HWND hwnd_ = nullptr;
  Text hint_;
  ColourRule rule_;
  document::Figure figure_;
};

}  // namespace zelkora::win32desk
