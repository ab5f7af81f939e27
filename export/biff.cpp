#include "export/biff.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "export/grid.h"

namespace dorvo::export_ {
namespace {

constexpr std::size_t kStyleFormats = 15;     // XF records of styles that come before those of cells, from version 3 on
constexpr int kDecimalFormats = 15;           // "0", "0.0", ... up to as many decimals
constexpr std::size_t kFirstOwnFormat = 164;  // index of the first number format that a workbook defines itself
constexpr std::size_t kRecordRoom = 8224;
constexpr std::size_t kAutomaticColor = 0x7FFF;
constexpr double kDigitWidth = 105;  // twips of a digit of the first font at 96 dots to the inch

// Indexes 8 and up of the palette that every version starts with.
constexpr std::array<std::uint32_t, 16> kPalette = {0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00,
                                                    0xFF00FF, 0x00FFFF, 0x800000, 0x008000, 0x000080, 0x808000,
                                                    0x800080, 0x008080, 0xC0C0C0, 0x808080};

std::size_t nearest_color(std::uint32_t rgb) {
  if (rgb == 0) return kAutomaticColor;
  const auto part = [](std::uint32_t color, int shift) { return static_cast<int>(color >> shift & 0xFF); };
  std::size_t best = 0;
  int distance = std::numeric_limits<int>::max();
  for (std::size_t i = 0; i < kPalette.size(); ++i) {
    int sum = 0;
    for (int shift : {16, 8, 0}) {
      const int difference = part(rgb, shift) - part(kPalette[i], shift);
      sum += difference * difference;
    }
    if (sum < distance) distance = sum, best = i;
  }
  return best + 8;
}

// Types of the records whose number tells their version: version 2, 3, 4, 5 and later.
struct Types {
  std::size_t two, three, four, five;
  std::size_t operator()(int version) const {
    return version == 2 ? two : version == 3 ? three : version == 4 ? four : five;
  }
};
constexpr Types kBof = {0x0009, 0x0209, 0x0409, 0x0809};
constexpr Types kFont = {0x0031, 0x0231, 0x0231, 0x0031};
constexpr Types kFormat = {0x001E, 0x001E, 0x041E, 0x041E};
constexpr Types kXf = {0x0043, 0x0243, 0x0443, 0x00E0};
constexpr Types kDimensions = {0x0000, 0x0200, 0x0200, 0x0200};
constexpr Types kRow = {0x0008, 0x0208, 0x0208, 0x0208};
constexpr Types kBlank = {0x0001, 0x0201, 0x0201, 0x0201};
constexpr Types kNumber = {0x0003, 0x0203, 0x0203, 0x0203};
constexpr Types kLabel = {0x0004, 0x0204, 0x0204, 0x0204};

constexpr std::size_t kBofGlobals = 0x0005;
constexpr std::size_t kBofSheet = 0x0010;

void add_bof(std::string& out, int version, std::size_t kind) {
  BiffBytes bof;
  bof.u16(version == 8 ? 0x0600 : version == 7 ? 0x0500 : static_cast<std::size_t>(version) << 8);
  if (version == 2) bof = BiffBytes().u16(2);
  bof.u16(kind);
  if (version == 3 || version == 4) bof.u16(0);
  if (biff_workbook(version)) bof.u16(version == 8 ? 0x0DBB : 0x096C).u16(version == 8 ? 0x07CC : 0x07C9);
  if (version == 8) bof.u32(0).u32(6);
  append_record(out, kBof(version), bof);
}

std::string number_format(int decimals) {
  return decimals == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(decimals), '0');
}

std::size_t horizontal(const CellFormat& format) {
  if (format.general_align) return 0;
  if (format.across) return 6;
  return format.align == engine::Align::Left ? 1 : format.align == engine::Align::Center ? 2 : 3;
}

// Thin for every side that has a border, at the bits where the version keeps that side.
std::size_t sides(int border, int top, int left, int bottom, int right, std::size_t value) {
  return (border & kBorderTop ? value << top : 0) | (border & kBorderLeft ? value << left : 0) |
         (border & kBorderBottom ? value << bottom : 0) | (border & kBorderRight ? value << right : 0);
}

constexpr std::size_t kThin = 1;
constexpr std::size_t kRuleColor = 8;

void add_margins(std::string& out, const BiffPrint& print) {
  const std::array<int, 4> margins = {print.left, print.right, print.top, print.bottom};
  for (std::size_t i = 0; i < margins.size(); ++i) append_record(out, 0x0026 + i, BiffBytes().f64(margins[i] / 1440.0));
}

void add_setup(std::string& out, int version, const BiffPrint& print) {
  if (version < 4) return;
  constexpr std::size_t kPortrait = 2;
  BiffBytes setup;
  setup.u16(print.a4 ? 9 : 0).u16(100).u16(1).u16(1).u16(0).u16(print.landscape ? 0 : kPortrait);
  if (biff_workbook(version)) setup.u16(600).u16(600).f64(0).f64(0).u16(1);
  append_record(out, 0x00A1, setup);
}

void add_breaks(std::string& out, int version, const std::vector<std::size_t>& breaks) {
  if (breaks.empty()) return;
  BiffBytes rows;
  rows.u16(breaks.size());
  for (std::size_t row : breaks) {
    rows.u16(row);
    if (version == 8) rows.u16(0).u16(255);
  }
  append_record(out, 0x001B, rows);
}

void add_widths(std::string& out, int version, const std::vector<int>& widths) {
  for (std::size_t i = 0; i < widths.size(); ++i) {
    const auto width = static_cast<std::size_t>(std::min(65280.0, widths[i] * 256 / kDigitWidth));
    if (version == 2)
      append_record(out, 0x0024, BiffBytes().u8(i).u8(i).u16(width));
    else
      append_record(out, 0x007D, BiffBytes().u16(i).u16(i).u16(width).u16(kStyleFormats).u16(0).u16(0));
  }
}

void add_dimensions(std::string& out, int version, const BiffSheet& sheet) {
  BiffBytes size;
  if (version == 8)
    size.u32(0).u32(sheet.rows).u16(0).u16(sheet.widths.size()).u16(0);
  else
    size.u16(0).u16(sheet.rows).u16(0).u16(sheet.widths.size());
  if (version >= 3 && version < 8) size.u16(0);
  append_record(out, kDimensions(version), size);
}

}  // namespace

BiffBytes& BiffBytes::f64(double value) {
  std::array<char, 8> raw;
  std::memcpy(raw.data(), &value, raw.size());
  bytes_.append(raw.data(), raw.size());
  return *this;
}

void append_record(std::string& out, std::size_t type, const BiffBytes& payload) {
  out += BiffBytes().u16(type).u16(payload.bytes().size()).bytes();
  out += payload.bytes();
}

BiffLimits biff_limits(int version) {
  BiffLimits limits;
  if (version < 8) limits.rows = 16384, limits.text = 255;
  return limits;
}

// ---- styles ----

BiffStyles::BiffStyles(int version) : version_(version) {
  engine::Style plain;
  font(plain, plain.half_points);
  format({});
}

std::size_t BiffStyles::font(const engine::Style& style, int half_points) {
  Font font;
  font.family = style.font;
  font.height = half_points * 10;
  font.flags = static_cast<std::uint8_t>((style.bold ? 1 : 0) | (style.italic ? 2 : 0) | (style.underline ? 4 : 0));
  font.color = nearest_color(style.color);
  const auto found = font_at_.find(font);
  if (found != font_at_.end()) return found->second;
  if (version_ == 2 && fonts_.size() == 4) {
    // Version 2 holds four fonts: the nearest in weight and slant serves.
    const auto alike = std::find_if(fonts_.begin(), fonts_.end(), [&](const Font& f) { return f.flags == font.flags; });
    return alike == fonts_.end() ? 0 : static_cast<std::size_t>(alike - fonts_.begin());
  }
  fonts_.push_back(font);
  return font_at_[font] = fonts_.size() - 1;
}

std::size_t BiffStyles::format(const CellFormat& format) {
  const std::size_t first = version_ == 2 ? 0 : kStyleFormats;
  const auto [found, added] = format_at_.insert({format, formats_.size() + first});
  if (added) formats_.push_back(format);
  return found->second;
}

std::string BiffStyles::records() const {
  std::string out;
  for (const Font& font : fonts_) add_font(out, font);
  // Readers count on the first four fonts, and none of them knows a font of index 4.
  for (std::size_t i = fonts_.size(); version_ > 2 && i < 4; ++i) add_font(out, fonts_.front());
  add_formats(out);
  for (std::size_t i = 0; version_ > 2 && i < kStyleFormats; ++i) add_format(out, {}, true);
  for (const CellFormat& format : formats_) add_format(out, format, false);
  if (version_ > 2) append_record(out, 0x0293, BiffBytes().u16(0x8000).u8(0).u8(0xFF));
  return out;
}

void BiffStyles::add_font(std::string& out, const Font& font) const {
  BiffBytes bytes;
  const std::size_t underline = font.flags >> 2 & 1u;
  bytes.u16(static_cast<std::size_t>(font.height)).u16(biff_workbook(version_) ? font.flags & 2u : font.flags);
  if (version_ >= 3) bytes.u16(font.color);
  if (biff_workbook(version_)) bytes.u16(font.flags & 1u ? 700 : 400).u16(0).u8(underline).u8(0).u8(0).u8(0);
  bytes.u8(font.family.size());
  if (version_ == 8) bytes.u8(0);
  append_record(out, kFont(version_), bytes.text(font.family));
  if (version_ == 2) append_record(out, 0x0045, BiffBytes().u16(font.color));
}

void BiffStyles::add_formats(std::string& out) const {
  const auto add = [&](std::size_t index, const std::string& code) {
    BiffBytes bytes;
    if (version_ == 4) bytes.u16(0);
    if (biff_workbook(version_)) bytes.u16(index);
    if (version_ == 8)
      bytes.u16(code.size()).u8(0);
    else
      bytes.u8(code.size());
    append_record(out, kFormat(version_), bytes.text(code));
  };
  if (!biff_workbook(version_)) add(0, "General");
  for (int decimals = 0; decimals <= kDecimalFormats; ++decimals)
    add(kFirstOwnFormat + static_cast<std::size_t>(decimals), number_format(decimals));
}

void BiffStyles::add_format(std::string& out, const CellFormat& format, bool style) const {
  const auto decimals = static_cast<std::size_t>(std::clamp(format.decimals, 0, kDecimalFormats));
  const std::size_t code = format.decimals == kGeneral ? 0 : decimals + (biff_workbook(version_) ? kFirstOwnFormat : 1);
  const std::size_t kind = style ? 0xFFF5 : 0x0001;  // of a style, or of a locked cell under style 0
  const std::size_t wrap = format.wrap ? 8 : 0;      // vertical alignment 0: at the top, where rows begin
  constexpr std::size_t kAllUsed = 0xFC;
  BiffBytes xf;
  switch (version_) {
    case 2:
      xf.u8(format.font).u8(0).u8(code).u8((horizontal(format) & 7) | sides(format.border, 5, 3, 6, 4, kThin));
      break;
    case 3:
      xf.u8(font_index(format.font)).u8(code).u8(style ? 5 : 1).u8(kAllUsed);
      xf.u16(horizontal(format) | wrap | (style ? 0xFFF0 : 0)).u16(0);
      xf.u32(sides(format.border, 0, 8, 16, 24, kThin | kRuleColor << 3));
      break;
    case 4:
      xf.u8(font_index(format.font)).u8(code).u16(kind);
      xf.u8(horizontal(format) | wrap).u8(kAllUsed).u16(0);
      xf.u32(sides(format.border, 0, 8, 16, 24, kThin | kRuleColor << 3));
      break;
    case 8:
      xf.u16(font_index(format.font)).u16(code).u16(kind);
      xf.u8(horizontal(format) | wrap).u8(0).u8(0).u8(kAllUsed);
      xf.u32(sides(format.border, 8, 0, 12, 4, kThin) | (format.border & kBorderLeft ? kRuleColor << 16 : 0) |
             (format.border & kBorderRight ? kRuleColor << 23 : 0));
      xf.u32((format.border & kBorderTop ? kRuleColor : 0) | (format.border & kBorderBottom ? kRuleColor << 7 : 0));
      xf.u16(0x20C0);
      break;
    default:
      xf.u16(font_index(format.font)).u16(code).u16(kind);
      xf.u8(horizontal(format) | wrap).u8(kAllUsed);
      xf.u32(0x20C0 | (format.border & kBorderBottom ? kThin << 22 | kRuleColor << 25 : 0));
      xf.u32(sides(format.border & ~kBorderBottom, 0, 3, 0, 6, kThin) |
             (format.border & kBorderTop ? kRuleColor << 9 : 0) | (format.border & kBorderLeft ? kRuleColor << 16 : 0) |
             (format.border & kBorderRight ? kRuleColor << 23 : 0));
  }
  append_record(out, kXf(version_), xf);
}

std::string BiffStyles::attributes(std::size_t format, std::string& front) const {
  constexpr std::size_t kInRecord = 63;  // the index stands in an IXFE record
  const CellFormat& f = formats_[format];
  if (format >= kInRecord) append_record(front, 0x0044, BiffBytes().u16(format));
  const auto code = static_cast<std::size_t>(f.decimals == kGeneral ? 0 : std::min(f.decimals, kDecimalFormats) + 1);
  return BiffBytes()
      .u8(std::min(format, kInRecord) | 0x40)
      .u8(code | f.font << 6)
      .u8((horizontal(f) & 7) | sides(f.border, 5, 3, 6, 4, kThin))
      .bytes();
}

// ---- texts ----

BiffText::BiffText(int version)
    : version_(version),
      narrow_("CP1252", Missing::QuestionMark),
      latin_("LATIN1", Missing::QuestionMark),
      wide_("UTF-16LE", Missing::QuestionMark) {}

std::string BiffText::counted(std::string_view utf8, std::size_t length_bytes) {
  const std::size_t most = length_bytes == 1 ? 255 : biff_limits(version_).text;
  std::string bytes;
  std::size_t unit = 1;
  std::size_t flag = 0;
  if (version_ < 8) {
    narrow_.append(bytes, utf8);
  } else {
    wide_.append(bytes, utf8);
    unit = 2;
    for (std::size_t i = 1; i < bytes.size(); i += 2)
      if (bytes[i] != 0) flag = 1;
    if (flag == 0) bytes = latin_(utf8), unit = 1;
  }
  if (bytes.size() > most * unit) bytes.resize(most * unit), cut_ = true;
  BiffBytes counted;
  length_bytes == 1 ? counted.u8(bytes.size() / unit) : counted.u16(bytes.size() / unit);
  if (version_ == 8) counted.u8(flag);
  return counted.text(bytes).bytes();
}

std::size_t BiffText::shared(const std::string& utf8) {
  ++uses_;
  const auto [found, added] = numbers_.insert({utf8, strings_.size()});
  if (added) strings_.push_back(&found->first);
  return found->second;
}

std::string BiffText::shared_table() {
  std::string out;
  std::string room = BiffBytes().u32(uses_).u32(strings_.size()).bytes();
  std::size_t type = 0x00FC;
  const auto flush = [&] {
    append_record(out, type, BiffBytes().text(room));
    room.clear();
    type = 0x003C;
  };
  for (const std::string* utf8 : strings_) {
    const std::string string = counted(*utf8, 2);
    const std::size_t unit = string[2] == 0 ? 1 : 2;
    if (room.size() + 3 + unit > kRecordRoom) flush();
    std::size_t at = 0;
    while (true) {
      // Only whole characters go into a record, and one that goes on says again how wide they are.
      std::size_t take = std::min(string.size() - at, kRecordRoom - room.size());
      if (at + take < string.size()) take -= (take - (at == 0 ? 3 : 0)) % unit;
      room += string.substr(at, take);
      at += take;
      if (at == string.size()) break;
      flush();
      room += string[2];
    }
  }
  flush();
  return out;
}

// ---- cells ----

void BiffCells::row(std::size_t row, std::size_t columns, int height) {
  constexpr std::size_t kDefaultHeight = 0x8000 | 255;
  constexpr std::size_t kHeightIsSet = 0x40;
  const std::size_t shown = height == 0 ? kDefaultHeight : static_cast<std::size_t>(height);
  BiffBytes bytes;
  bytes.u16(row).u16(0).u16(columns).u16(shown).u16(0);
  if (version_ == 2)
    bytes.u8(0).u16(0);
  else
    bytes.u16(0).u32(0x0100 | (height == 0 ? 0 : kHeightIsSet) | kStyleFormats << 16);
  append_record(records_, kRow(version_), bytes);
}

BiffBytes BiffCells::place(std::size_t row, std::size_t column, std::size_t format) {
  BiffBytes bytes;
  bytes.u16(row).u16(column);
  if (version_ == 2)
    bytes.text(styles_.attributes(format, records_));
  else
    bytes.u16(format);
  return bytes;
}

void BiffCells::blank(std::size_t row, std::size_t column, std::size_t format) {
  const BiffBytes bytes = place(row, column, format);
  append_record(records_, kBlank(version_), bytes);
}

void BiffCells::number(std::size_t row, std::size_t column, std::size_t format, double number) {
  BiffBytes bytes = place(row, column, format);
  append_record(records_, kNumber(version_), bytes.f64(number));
}

void BiffCells::label(std::size_t row, std::size_t column, std::size_t format, const std::string& utf8) {
  BiffBytes bytes = place(row, column, format);
  if (version_ == 8)
    append_record(records_, 0x00FD, bytes.u32(text_.shared(utf8)));
  else
    append_record(records_, kLabel(version_), bytes.text(text_.counted(utf8, version_ == 2 ? 1 : 2)));
}

std::string BiffCells::take() {
  std::string taken;
  taken.swap(records_);
  return taken;
}

// ---- sheets and workbook ----

std::string sheet_head(int version, const BiffSheet& sheet, const BiffStyles& styles) {
  constexpr std::size_t kFitToPage = 0x0100;
  constexpr std::size_t kUsual = 0x00C1;  // page breaks shown, outlines below and to the right
  std::string out;
  add_bof(out, version, kBofSheet);
  if (version < 5) append_record(out, 0x0042, BiffBytes().u16(version == 4 ? 1252 : 0x8001));
  if (version >= 3) append_record(out, 0x0081, BiffBytes().u16(kUsual | kFitToPage));
  add_breaks(out, version, sheet.breaks);
  if (version < 5) out += styles.records();
  add_margins(out, sheet.print);
  add_setup(out, version, sheet.print);
  add_widths(out, version, sheet.widths);
  add_dimensions(out, version, sheet);
  return out;
}

std::string sheet_tail(int version, const BiffSheet& sheet) {
  constexpr std::size_t kMergesInRecord = 1024;
  constexpr std::size_t kShown = 0x00B6;  // grid lines aside, as a sheet usually opens
  constexpr std::size_t kSelected = 0x0600;
  std::string out;
  if (biff_workbook(version)) {
    BiffBytes window;
    window.u16((kShown & ~std::size_t{2}) | (sheet.first ? kSelected : 0)).u16(0).u16(0);
    if (version == 8)
      window.u16(64).u16(0).u16(0).u16(0).u32(0);
    else
      window.u32(0);
    append_record(out, 0x023E, window);
  }
  for (std::size_t i = 0; i < sheet.merges.size(); i += kMergesInRecord) {
    const std::size_t end = std::min(sheet.merges.size(), i + kMergesInRecord);
    BiffBytes merges;
    merges.u16(end - i);
    for (std::size_t k = i; k < end; ++k) {
      const BiffMerge& m = sheet.merges[k];
      merges.u16(m.first_row).u16(m.last_row).u16(m.first_column).u16(m.last_column);
    }
    append_record(out, 0x00E5, merges);
  }
  append_record(out, 0x000A, {});
  return out;
}

std::string workbook_globals(int version, const std::vector<BiffSheet>& sheets, const std::vector<std::size_t>& sizes,
                             const BiffStyles& styles, BiffText& text) {
  std::string head;
  add_bof(head, version, kBofGlobals);
  append_record(head, 0x0042, BiffBytes().u16(version == 8 ? 1200 : 1252));
  append_record(head, 0x003D, BiffBytes().u16(0).u16(0).u16(16000).u16(9000).u16(0x38).u16(0).u16(0).u16(1).u16(600));
  head += styles.records();
  std::string tail;
  if (version == 8) tail += text.shared_table();
  append_record(tail, 0x000A, {});

  std::vector<std::string> names;
  std::size_t size = head.size() + tail.size();
  for (const BiffSheet& sheet : sheets) {
    names.push_back(text.counted(sheet.name, 1));
    size += 4 + 6 + names.back().size();
  }
  for (std::size_t i = 0; i < sheets.size(); ++i) {
    append_record(head, 0x0085, BiffBytes().u32(size).u16(0).text(names[i]));
    size += sizes[i];
  }
  return head + tail;
}

}  // namespace dorvo::export_
