// The in-memory grid, title box and form object, and their drawing as text.
#include "zelkora/platform/headless/headless_grid.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/fault.h"

namespace zelkora::platform::headless {
namespace {

constexpr int32_t kDefaultColWidth = 64;

std::string join_utf8(const std::vector<Text>& lines) {
  std::string out;
  for (const Text& line : lines) {
    out += to_utf8(line);
    out += '\n';
  }
  return out;
}

// The text as one line of the drawing: control characters show as blanks.
Text shown(TextView text) {
  Text out(text);
  for (char16_t& c : out) {
    if (c < 0x20) c = u' ';
  }
  return out;
}

void append_padded(Text& out, TextView text, std::size_t width) {
  out += text;
  const std::size_t used = codepage::display_width(text);
  if (used < width) out.append(width - used, u' ');
}

void cut_trailing_blanks(Text& line) { line.erase(line.find_last_not_of(u' ') + 1); }

// ---- Rich text ---------------------------------------------------------------

// The colours of the system's default scheme, for the colour table.
uint32_t resolve(uint32_t colour) {
  if (!is_system_colour(colour)) return colour;
  switch (colour & 0xFF) {
    case 5:
      return rgb(255, 255, 255);  // window
    case 11:
      return rgb(244, 247, 252);  // inactive border
    case 12:
      return rgb(171, 171, 171);  // application workspace
    case 15:
      return rgb(240, 240, 240);  // button face
    case 17:
      return rgb(109, 109, 109);  // gray text
    default:
      return rgb(0, 0, 0);  // the text colours
  }
}

void append_number(Text& out, int64_t n) {
  for (char c : std::to_string(n)) out.push_back(static_cast<char16_t>(c));
}

using Format = MemoryRichTextBox::Format;

Text write_rtf(TextView text, const std::vector<Format>& formats, float font_size) {
  std::vector<uint32_t> table;  // entries 1.. of the colour table
  for (const Format& f : formats) {
    const uint32_t c = resolve(f.colour);
    if (f.colour != kColourWindowText && std::find(table.begin(), table.end(), c) == table.end()) {
      table.push_back(c);
    }
  }
  Text out = u"{\\rtf1\\ansi\\ansicpg936\\deff0{\\fonttbl{\\f0\\fnil\\fcharset134 SimSun;}}";
  if (!table.empty()) {
    out += u"{\\colortbl ;";
    for (uint32_t c : table) {
      out += u"\\red";
      append_number(out, c & 0xFF);
      out += u"\\green";
      append_number(out, (c >> 8) & 0xFF);
      out += u"\\blue";
      append_number(out, (c >> 16) & 0xFF);
      out += u";";
    }
    out += u"}";
  }
  out += u"\r\n\\viewkind4\\uc1\\pard\\f0";
  if (font_size > 0) {
    out += u"\\fs";
    append_number(out, static_cast<int64_t>(font_size * 2 + 0.5f));
  }
  out += u' ';
  Format current;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const Format& f = formats[i];
    if (f.bold != current.bold) out += f.bold ? u"\\b " : u"\\b0 ";
    if (f.colour != current.colour) {
      out += u"\\cf";
      const auto it = std::find(table.begin(), table.end(), resolve(f.colour));
      append_number(out, f.colour == kColourWindowText ? 0 : it - table.begin() + 1);
      out += u' ';
    }
    current = f;
    const char16_t c = text[i];
    if (c == u'\r' || c == u'\n') {
      if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      out += u"\\par\r\n";
    } else if (c == u'\t') {
      out += u"\\tab ";
    } else if (c == u'\\' || c == u'{' || c == u'}') {
      out += u'\\';
      out += c;
    } else if (c >= 0x80) {
      out += u"\\u";
      append_number(out, static_cast<int16_t>(c));
      out += u'?';
    } else if (c >= 0x20) {
      out += c;
    }
  }
  out += u'}';
  return out;
}

bool is_letter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }
int hex_value(char16_t c) {
  if (is_digit(c)) return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

// Groups whose content is not text.
constexpr std::array<std::u16string_view, 12> kSkippedDestinations = {
    u"fonttbl", u"filetbl", u"stylesheet", u"info",    u"pict",      u"object",
    u"header",  u"footer",  u"listtable",  u"rsidtbl", u"themedata", u"latentstyles"};

class RtfReader {
 public:
  explicit RtfReader(TextView rtf) : rtf_(rtf) {}

  void read(Text& text, std::vector<Format>& formats) {
    while (i_ < rtf_.size()) {
      const char16_t c = rtf_[i_];
      if (c == u'{') {
        stack_.push_back(state_);
        ++i_;
      } else if (c == u'}') {
        if (!stack_.empty()) {
          state_ = stack_.back();
          stack_.pop_back();
        }
        fallback_ = 0;
        ++i_;
      } else if (c == u'\\') {
        control();
      } else {
        ++i_;
        if (c == u'\r' || c == u'\n') continue;
        if (state_.colour_table) {
          if (c == u';') end_colour();
        } else if (c >= 0x20 || c == u'\t') {
          put(c);
        }
      }
    }
    text = std::move(text_);
    formats = std::move(formats_);
  }

 private:
  struct State {
    Format format;
    bool skip = false;
    bool colour_table = false;
    int32_t uc = 1;
  };

  void emit(char16_t c) {
    if (state_.skip || state_.colour_table) return;
    text_.push_back(c);
    formats_.push_back(state_.format);
  }
  // A character that may be the fallback of a preceding "\u".
  void put(char16_t c) {
    if (fallback_ > 0) {
      --fallback_;
      return;
    }
    emit(c);
  }

  void end_colour() {
    table_.push_back(colour_set_ ? colour_ : kColourWindowText);
    colour_ = 0;
    colour_set_ = false;
  }

  void control() {
    if (i_ + 1 >= rtf_.size()) {
      ++i_;
      return;
    }
    const char16_t c = rtf_[i_ + 1];
    if (is_letter(c)) return word();
    i_ += 2;
    switch (c) {
      case u'\\':
      case u'{':
      case u'}':
        put(c);
        break;
      case u'~':
        put(0xA0);
        break;
      case u'_':
        put(u'-');
        break;
      case u'*':
        state_.skip = true;
        break;
      case u'\r':
      case u'\n':
        paragraph();
        break;
      case u'\'':
        i_ -= 2;
        bytes();
        break;
      default:
        break;
    }
  }

  void word() {
    const std::size_t start = ++i_;
    while (i_ < rtf_.size() && is_letter(rtf_[i_])) ++i_;
    const TextView name = rtf_.substr(start, i_ - start);
    bool has_param = false;
    int64_t param = 0;
    bool negative = false;
    if (i_ < rtf_.size() && rtf_[i_] == u'-' && i_ + 1 < rtf_.size() && is_digit(rtf_[i_ + 1])) {
      negative = true;
      ++i_;
    }
    while (i_ < rtf_.size() && is_digit(rtf_[i_])) {
      has_param = true;
      param = std::min<int64_t>(param * 10 + (rtf_[i_] - u'0'), INT32_MAX);
      ++i_;
    }
    if (negative) param = -param;
    if (i_ < rtf_.size() && rtf_[i_] == u' ') ++i_;

    if (name == u"b") {
      state_.format.bold = !has_param || param != 0;
    } else if (name == u"plain") {
      state_.format = Format{};
    } else if (name == u"cf") {
      state_.format.colour = param >= 0 && param < static_cast<int64_t>(table_.size())
                                 ? table_[static_cast<std::size_t>(param)]
                                 : kColourWindowText;
    } else if (name == u"par" || name == u"line") {
      paragraph();
    } else if (name == u"tab") {
      put(u'\t');
    } else if (name == u"u") {
      emit(static_cast<char16_t>(param & 0xFFFF));
      fallback_ = state_.uc;
    } else if (name == u"uc") {
      state_.uc = static_cast<int32_t>(std::max<int64_t>(param, 0));
    } else if (name == u"colortbl") {
      state_.colour_table = true;
    } else if (name == u"red" || name == u"green" || name == u"blue") {
      const int shift = name == u"red" ? 0 : name == u"green" ? 8 : 16;
      colour_ |= (static_cast<uint32_t>(param) & 0xFF) << shift;
      colour_set_ = true;
    } else if (std::find(kSkippedDestinations.begin(), kSkippedDestinations.end(), name) !=
               kSkippedDestinations.end()) {
      state_.skip = true;
    }
  }

  void paragraph() {
    emit(u'\r');
    emit(u'\n');
  }

  // A run of "\'hh": bytes of code page 936.
  void bytes() {
    std::string run;
    while (i_ + 3 < rtf_.size() && rtf_[i_] == u'\\' && rtf_[i_ + 1] == u'\'') {
      const int hi = hex_value(rtf_[i_ + 2]);
      const int lo = hex_value(rtf_[i_ + 3]);
      if (hi < 0 || lo < 0) break;
      i_ += 4;
      if (fallback_ > 0) {
        --fallback_;
        continue;
      }
      run.push_back(static_cast<char>(hi * 16 + lo));
    }
    if (run.empty() && rtf_.substr(i_, 2) == u"\\'") i_ += 2;  // a damaged "\'"
    for (char16_t c : codepage::from_ansi(run)) emit(c);
  }

  TextView rtf_;
  std::size_t i_ = 0;
  State state_;
  std::vector<State> stack_;
  int32_t fallback_ = 0;
  std::vector<uint32_t> table_;
  uint32_t colour_ = 0;
  bool colour_set_ = false;
  Text text_;
  std::vector<Format> formats_;
};

}  // namespace

// ---- MemoryGrid ----------------------------------------------------------------

void MemoryGrid::check_row(int32_t row) const {
  if (row < 0 || row >= Rows()) {
    throw Fault(FaultKind::IndexOutOfRange,
                "grid row " + std::to_string(row) + " outside 0.." + std::to_string(Rows() - 1));
  }
}

void MemoryGrid::check_col(int32_t col) const {
  if (col < 0 || col >= cols_) {
    throw Fault(FaultKind::IndexOutOfRange,
                "grid column " + std::to_string(col) + " outside 0.." + std::to_string(cols_ - 1));
  }
}

const MemoryGrid::Cell& MemoryGrid::cell(int32_t row, int32_t col) const {
  check_row(row);
  check_col(col);
  return rows_[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(col)];
}

MemoryGrid::Cell& MemoryGrid::at(int32_t row, int32_t col) {
  return const_cast<Cell&>(std::as_const(*this).cell(row, col));
}

void MemoryGrid::Rows(int32_t rows) {
  if (rows < 0) throw Fault(FaultKind::IndexOutOfRange, "negative grid rows");
  calls.push_back("Rows=" + std::to_string(rows));
  Row fresh;
  fresh.cells.resize(static_cast<std::size_t>(cols_));
  rows_.resize(static_cast<std::size_t>(rows), fresh);
  active_.row = std::clamp(active_.row, 0, std::max(rows - 1, 0));
}

void MemoryGrid::Cols(int32_t cols) {
  if (cols < 0) throw Fault(FaultKind::IndexOutOfRange, "negative grid columns");
  calls.push_back("Cols=" + std::to_string(cols));
  cols_ = cols;
  col_widths_.resize(static_cast<std::size_t>(cols), kDefaultColWidth);
  for (Row& row : rows_) {
    row.cells.resize(static_cast<std::size_t>(cols));
    row.merge_last = std::min(row.merge_last, cols - 1);
    if (row.merge_last <= row.merge_first) {
      row.merge_first = 0;
      row.merge_last = -1;
    }
  }
  active_.col = std::clamp(active_.col, 0, std::max(cols - 1, 0));
}

int32_t MemoryGrid::RowHeight(int32_t row) const {
  check_row(row);
  const Row& r = rows_[static_cast<std::size_t>(row)];
  return r.height_set ? r.height : default_row_height_;
}

void MemoryGrid::RowHeight(int32_t row, int32_t height) {
  check_row(row);
  Row& r = rows_[static_cast<std::size_t>(row)];
  r.height = height;
  r.height_set = true;
}

int32_t MemoryGrid::ColWidth(int32_t col) const {
  check_col(col);
  return col_widths_[static_cast<std::size_t>(col)];
}

void MemoryGrid::ColWidth(int32_t col, int32_t width) {
  check_col(col);
  col_widths_[static_cast<std::size_t>(col)] = width;
}

bool MemoryGrid::Locked(int32_t row) const {
  check_row(row);
  return rows_[static_cast<std::size_t>(row)].locked;
}

void MemoryGrid::Locked(int32_t row, bool locked) {
  check_row(row);
  rows_[static_cast<std::size_t>(row)].locked = locked;
}

void MemoryGrid::Merge(int32_t row, int32_t col1, int32_t col2) {
  check_row(row);
  check_col(col1);
  check_col(col2);
  calls.push_back("Merge " + std::to_string(row) + " " + std::to_string(col1) + " " +
                  std::to_string(col2));
  Row& r = rows_[static_cast<std::size_t>(row)];
  r.merge_first = std::min(col1, col2);
  r.merge_last = std::max(col1, col2);
  if (r.merge_last == r.merge_first) {
    r.merge_first = 0;
    r.merge_last = -1;
  }
}

std::pair<int32_t, int32_t> MemoryGrid::merged(int32_t row) const {
  check_row(row);
  const Row& r = rows_[static_cast<std::size_t>(row)];
  return {r.merge_first, r.merge_last};
}

void MemoryGrid::AddPicture(const Picture& picture, TextView key) {
  calls.push_back("AddPicture " + to_utf8(key));
  for (auto& [k, p] : pictures_) {
    if (k == key) {
      p = picture;
      return;
    }
  }
  pictures_.emplace_back(zelkora::Text(key), picture);
}

void MemoryGrid::SetImage(int32_t row, int32_t col, TextView key) {
  Cell& c = at(row, col);
  if (!key.empty() && std::none_of(pictures_.begin(), pictures_.end(),
                                   [&](const auto& p) { return p.first == key; })) {
    throw Fault(FaultKind::MissingResource, "no grid picture with key \"" + to_utf8(key) + "\"");
  }
  c.image_key = key;
}

void MemoryGrid::AutoRedraw(bool redraw) {
  calls.push_back(redraw ? "AutoRedraw=1" : "AutoRedraw=0");
  auto_redraw_ = redraw;
}

void MemoryGrid::ActiveCell(int32_t row, int32_t col) {
  check_row(row);
  check_col(col);
  active_ = {row, col};
}

bool MemoryGrid::row_shown(int32_t row) const {
  if (row <= 0 || kept_.empty()) return RowHeight(row) > 0;
  return static_cast<std::size_t>(row) < kept_.size() && kept_[static_cast<std::size_t>(row)];
}

int32_t MemoryGrid::next_editable_row(int32_t row, int32_t col, int step) const {
  if (col < 0 || col >= cols_ || step == 0) return -1;
  for (int32_t r = row + step; r >= 1 && r < Rows(); r += step) {
    if (row_shown(r) && !Locked(r)) return r;
  }
  return -1;
}

int32_t MemoryGrid::next_shown_row(int32_t row) const {
  for (int32_t r = row + 1; r < Rows(); ++r) {
    if (row_shown(r)) return r;
  }
  return row;
}

CellRef MemoryGrid::vertical_step(CellRef at, CellRef& cursor, int step) const {
  const auto in_range = [this](int32_t row, int32_t col) {
    if (row < 0 || row >= Rows()) return false;
    const auto [first, last] = merged(row);
    return last > first && first <= col && col <= last;
  };
  // Across a merged range the column Up and Down last moved in is kept;
  // else it is the active cell's.
  const bool kept =
      cursor.row == at.row && in_range(at.row, at.col) && in_range(at.row, cursor.col);
  const int32_t col = kept ? cursor.col : at.col;
  for (int32_t r = at.row + step; r >= 0 && r < Rows(); r += step) {
    if (!row_shown(r)) continue;
    cursor = {r, col};
    return {r, in_range(r, col) ? merged(r).first : col};
  }
  return at;
}

int32_t MemoryGrid::BottomRow() const {
  return bottom_row >= 0 ? std::min(bottom_row, Rows() - 1) : Rows() - 1;
}

void MemoryGrid::SetFocus(int32_t row, int32_t col) {
  ActiveCell(row, col);
  focused = true;
  calls.push_back("SetFocus " + std::to_string(row) + " " + std::to_string(col));
}

std::vector<zelkora::Text> MemoryGrid::render_lines(const MemoryRichTextBox* title) const {
  auto text_at = [&](const Row& row, int32_t col) -> TextView {
    return col < cols_ ? TextView(row.cells[static_cast<std::size_t>(col)].text) : TextView();
  };
  auto heading = [](const Row& row) { return row.merge_first <= 2 && row.merge_last >= 2; };
  std::size_t picture_width = 1;
  std::size_t caption_width = 0;
  for (const Row& row : rows_) {
    if (cols_ > 1) {
      picture_width = std::max(picture_width, codepage::display_width(row.cells[1].image_key));
    }
    if (!heading(row)) {
      caption_width = std::max(caption_width, codepage::display_width(shown(text_at(row, 2))));
    }
  }

  std::vector<zelkora::Text> lines;
  for (int32_t r = 0; r < Rows(); ++r) {
    if (RowHeight(r) <= 0) continue;
    const Row& row = rows_[static_cast<std::size_t>(r)];
    zelkora::Text line;
    append_padded(line, cols_ > 1 ? TextView(row.cells[1].image_key) : TextView(), picture_width);
    line += u' ';
    if (heading(row)) {
      for (int32_t c = std::max(row.merge_first, 1); c <= row.merge_last; ++c) {
        if (!text_at(row, c).empty()) {
          line += shown(text_at(row, c));
          break;
        }
      }
    } else {
      append_padded(line, shown(text_at(row, 2)), caption_width);
      line += u"  ";
      const zelkora::Text value = shown(text_at(row, 3));
      const bool bold = cols_ > 3 && row.cells[3].font_bold && !value.empty();
      line += bold ? u"*" + value + u"*" : value;
    }
    cut_trailing_blanks(line);
    lines.push_back(std::move(line));
  }
  if (title) {
    lines.emplace_back(8, u'-');
    for (zelkora::Text& line : title->render_lines()) lines.push_back(std::move(line));
  }
  return lines;
}

std::string MemoryGrid::render(const MemoryRichTextBox* title) const {
  return join_utf8(render_lines(title));
}

// ---- MemoryRichTextBox -----------------------------------------------------------

void MemoryRichTextBox::Text(TextView text) {
  text_ = text;
  formats_.assign(text_.size(), Format{});
  sel_start_ = 0;
  sel_length_ = 0;
}

zelkora::Text MemoryRichTextBox::TextRTF() const { return write_rtf(text_, formats_, font_size); }

void MemoryRichTextBox::TextRTF(TextView rtf) {
  if (trim_left(rtf).substr(0, 5) != u"{\\rtf") {  // plain text, as a rich-text box takes it
    Text(rtf);
    return;
  }
  RtfReader(rtf).read(text_, formats_);
  sel_start_ = 0;
  sel_length_ = 0;
}

void MemoryRichTextBox::SelStart(int32_t start) {
  sel_start_ = std::clamp(start, 0, static_cast<int32_t>(text_.size()));
  sel_length_ = 0;
}

void MemoryRichTextBox::SelLength(int32_t length) {
  sel_length_ = std::clamp(length, 0, static_cast<int32_t>(text_.size()) - sel_start_);
}

zelkora::Text MemoryRichTextBox::SelText() const {
  return text_.substr(static_cast<std::size_t>(sel_start_), static_cast<std::size_t>(sel_length_));
}

void MemoryRichTextBox::SelText(TextView text) {
  const auto start = static_cast<std::size_t>(sel_start_);
  const auto length = static_cast<std::size_t>(sel_length_);
  text_.replace(start, length, text);
  const auto at = formats_.begin() + static_cast<std::ptrdiff_t>(start);
  formats_.erase(at, at + static_cast<std::ptrdiff_t>(length));
  formats_.insert(formats_.begin() + static_cast<std::ptrdiff_t>(start), text.size(),
                  Format{false, sel_color_});
  sel_start_ += static_cast<int32_t>(text.size());
  sel_length_ = 0;
}

void MemoryRichTextBox::SelColor(uint32_t colour) {
  sel_color_ = colour;
  for (int32_t i = sel_start_; i < sel_start_ + sel_length_; ++i) {
    formats_[static_cast<std::size_t>(i)].colour = colour;
  }
}

std::vector<zelkora::Text> MemoryRichTextBox::render_lines() const {
  std::vector<zelkora::Text> lines;
  if (text_.empty()) return lines;
  for (std::size_t begin = 0;;) {
    std::size_t end = std::min(text_.find_first_of(u"\r\n", begin), text_.size());
    std::size_t last = end;  // trailing blanks are cut
    while (last > begin && (text_[last - 1] == u' ' || text_[last - 1] < 0x20)) --last;
    zelkora::Text line;
    bool bold = false;
    for (std::size_t i = begin; i < last; ++i) {
      if (formats_[i].bold != bold) {
        line += u'*';
        bold = !bold;
      }
      line += text_[i] < 0x20 ? u' ' : text_[i];
    }
    if (bold) line += u'*';
    lines.push_back(std::move(line));
    if (end == text_.size()) break;
    begin = end + (text_.compare(end, 2, u"\r\n") == 0 ? 2 : 1);
  }
  return lines;
}

std::string MemoryRichTextBox::render() const { return join_utf8(render_lines()); }

// ---- MemoryGridForm --------------------------------------------------------------

int32_t MemoryGridForm::LabelColWidth() {
  calls.push_back({"LabelColWidth", {}, {}});
  return label_col_width;
}

bool MemoryGridForm::bDisplayPicture() {
  calls.push_back({"bDisplayPicture", {}, {}});
  return display_picture;
}

void MemoryGridForm::Let_Text(std::vector<zelkora::Text>& texts) {
  calls.push_back({"Let_Text", texts, {}});
  last_texts_ = texts;
}

void MemoryGridForm::ControlEnable(std::vector<bool>& marks) {
  calls.push_back({"ControlEnable(hidden)", {}, marks});
  answer(last_texts_, marks);
}

void MemoryGridForm::ControlEnable(std::vector<zelkora::Text>& texts, std::vector<bool>& marks) {
  calls.push_back({"ControlEnable(texts, hidden)", texts, marks});
  answer(texts, marks);
}

void MemoryGridForm::answer(const std::vector<zelkora::Text>& texts, std::vector<bool>& marks) {
  if (on_control_enable) return on_control_enable(texts, marks);
  for (std::size_t i = 0; i < std::min(hidden.size(), marks.size()); ++i) marks[i] = hidden[i];
}

std::vector<std::string> MemoryGridForm::call_names() const {
  std::vector<std::string> names;
  for (const Call& call : calls) names.push_back(call.name);
  return names;
}

}  // namespace zelkora::platform::headless
