// The form's title box over the system's rich-edit control (Msftedit.dll),
// read-only as the user sees it. The control keeps its text, formats and
// selection; this adapter speaks the interface's units: a line break is
// "\r\n" (the control keeps a lone "\r" per paragraph), positions count
// UTF-16 units with two for each break, and a position inside a break is
// taken as the start of the break.
//
// Every line break the box is given, "\r\n", "\r" or "\n", becomes a
// paragraph and reads back as "\r\n". TextRTF is the control's own writing
// (ASCII: characters of its code page as "\'hh", others as "\uN"), so
// that a form may replace plain markers in it with "\b " and "\b0 " and
// give it back; it takes any RTF, characters beyond ASCII included (the
// library's document writer's too). A "\par" that ends the RTF is the
// control's own last paragraph mark: it leaves no break at the end. Text
// the box is given keeps the box's font size (FontSize, or the message
// font's); text of the window colour follows the user's scheme.
//
//   win32::RichTextBox title(panel.hwnd());
//   title.SelColor(kColourButtonText);
//   title.SelText(u"_bb(标题)bb_\r\n说明");
#pragma once

#include <string>

#include "zelkora/platform/win32gui/window_base.h"

namespace zelkora::platform::win32 {

class RichTextBox : public HwndControl<platform::RichTextBox> {
 public:
  explicit RichTextBox(HWND parent);
  ~RichTextBox() override;

  zelkora::Text Text() const override;
  void Text(TextView text) override;
  zelkora::Text TextRTF() const override;
  void TextRTF(TextView rtf) override;
  int32_t SelStart() const override;
  void SelStart(int32_t start) override;
  int32_t SelLength() const override;
  void SelLength(int32_t length) override;
  zelkora::Text SelText() const override;
  void SelText(TextView text) override;
  uint32_t SelColor() const override { return sel_colour_; }
  void SelColor(uint32_t colour) override;
  zelkora::Text ToolTipText() const override { return tool_tip_text_; }
  void ToolTipText(TextView text) override;
  float FontSize() const override { return font_size_; }
  void FontSize(float size) override;

  HWND tool_tip() const { return tool_tip_; }

 private:
  static LRESULT CALLBACK on_message(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  struct Selection {
    int32_t start = 0;
    int32_t end = 0;
  };
  // In the interface's units, with the text they count in.
  Selection selection(const zelkora::Text& text) const;
  void select(const zelkora::Text& text, int32_t start, int32_t end);
  // The box's face and size over all its text, and for text to come.
  void apply_font();
  void follow_dpi(int dpi);

  HWND tool_tip_ = nullptr;
  zelkora::Text tool_tip_text_;
  uint32_t sel_colour_ = kColourWindowText;
  float font_size_ = 0;
  float message_points_ = 9;
  std::wstring face_;
};

}  // namespace zelkora::platform::win32
