#include "export/pdf_fonts.h"

#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "engine/utf8.h"
#include "export/deflate.h"
#include "export/win_ansi.h"
#include "value/failure.h"
#include "value/handle.h"
#include "value/text.h"

namespace dorvo::export_ {
namespace {

using engine::Face;
using engine::FontFace;

using BlobPtr = value::Handle<hb_blob_t, hb_blob_destroy>;
using HbFacePtr = value::Handle<hb_face_t, hb_face_destroy>;
using InputPtr = value::Handle<hb_subset_input_t, hb_subset_input_destroy>;
using PlanPtr = value::Handle<hb_subset_plan_t, hb_subset_plan_destroy>;

bool is_letter_or_digit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// "TimesNewRoman-B": the family without its blanks, and the style. A function of the face alone, because content
// streams that hold it are kept from one document to the next.
std::string resource_name(const Face& face) {
  std::string name;
  for (const char c : face.family) {
    if (is_letter_or_digit(c))
      name += c;
    else if (c != ' ')
      put_hex(name += '_', static_cast<unsigned char>(c), 2);
  }
  if (face.bold || face.italic) name += '-';
  if (face.bold) name += 'B';
  if (face.italic) name += 'I';
  return name;
}

// Big-endian numbers of a font's table; 0 behind its end.
class Table {
 public:
  Table(hb_face_t* face, const char (&tag)[5])
      : blob_(hb_face_reference_table(face, HB_TAG(tag[0], tag[1], tag[2], tag[3]))) {
    data_ = reinterpret_cast<const std::uint8_t*>(hb_blob_get_data(blob_.get(), &size_));
  }
  int u8(unsigned at) const { return at < size_ ? data_[at] : 0; }
  unsigned u16(unsigned at) const { return static_cast<unsigned>(u8(at) << 8 | u8(at + 1)); }
  int i16(unsigned at) const { return static_cast<std::int16_t>(u8(at) << 8 | u8(at + 1)); }

 private:
  BlobPtr blob_;
  const std::uint8_t* data_ = nullptr;
  unsigned size_ = 0;
};

// ---- Subsets

struct Subset {
  std::string bytes;       // packed or not
  std::size_t length = 0;  // unpacked
};
using SubsetPtr = std::shared_ptr<const Subset>;

InputPtr subset_input() {
  InputPtr input(hb_subset_input_create_or_fail());
  if (!input) throw std::bad_alloc();
  hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING);
  // What only layout and naming need; a reader of the file draws glyphs by their numbers.
  static constexpr hb_tag_t kDropped[] = {
      HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'), HB_TAG('G', 'D', 'E', 'F'), HB_TAG('k', 'e', 'r', 'n'),
      HB_TAG('n', 'a', 'm', 'e'), HB_TAG('O', 'S', '/', '2'), HB_TAG('p', 'o', 's', 't'), HB_TAG('g', 'a', 's', 'p')};
  hb_set_t* dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
  for (const hb_tag_t tag : kDropped) hb_set_add(dropped, tag);
  return input;
}

[[noreturn]] void subset_failure(const FontFace& face) {
  throw value::Failure(value::Error::CannotWrite, "Font file \"" + face.file + "\" cannot be cut down for the PDF");
}

SubsetPtr finished(hb_face_t* face, bool packed) {
  const BlobPtr blob(hb_face_reference_blob(face));
  unsigned length = 0;
  const char* data = hb_blob_get_data(blob.get(), &length);
  const std::string_view bytes(data, length);
  return std::make_shared<Subset>(Subset{packed ? deflated(bytes) : std::string(bytes), length});
}

SubsetPtr latin_subset(const FontFace& face, const CodeSet& codes, bool packed) {
  const InputPtr input = subset_input();
  for (unsigned code = 0; code < codes.size(); ++code)
    if (codes[code]) hb_set_add(hb_subset_input_unicode_set(input.get()), of_win_ansi(static_cast<std::uint8_t>(code)));
  const HbFacePtr cut(hb_subset_or_fail(face.hb_face(), input.get()));
  if (!cut) subset_failure(face);
  return finished(cut.get(), packed);
}

void put_u16(std::string& out, unsigned number) {
  out += static_cast<char>(number >> 8);
  out += static_cast<char>(number & 0xFF);
}

// A character map that leads from code 1, 2, ... to the glyphs: one Macintosh subtable of format 6.
std::string code_map(const std::vector<unsigned>& glyphs) {
  const auto count = static_cast<unsigned>(glyphs.size());
  std::string map;
  for (const unsigned number : {0u, 1u, 1u, 0u, 0u, 12u, 6u, 10 + 2 * count, 0u, 1u, count}) put_u16(map, number);
  for (const unsigned glyph : glyphs) put_u16(map, glyph);
  return map;
}

// The glyphs' widths, with those that the codes give them instead of the face's own: readers that go by the font file
// then see no gap behind a mark that stands on its letter.
struct Widths {
  std::string hhea, hmtx;
};

Widths coded_widths(hb_face_t* cut, const std::map<unsigned, unsigned>& coded) {
  const Table hhea(cut, "hhea"), hmtx(cut, "hmtx");
  const unsigned count = hb_face_get_glyph_count(cut), full = hhea.u16(34);
  Widths widths;
  for (unsigned at = 0; at < 34; at += 2) put_u16(widths.hhea, hhea.u16(at));
  put_u16(widths.hhea, count);
  for (unsigned glyph = 0; glyph < count; ++glyph) {
    const auto width = coded.find(glyph);
    put_u16(widths.hmtx, width != coded.end() ? width->second : hmtx.u16(4 * std::min(glyph, full - 1)));
    put_u16(widths.hmtx, hmtx.u16(glyph < full ? 4 * glyph + 2 : 2 * (full + glyph)));
  }
  return widths;
}

void add_table(hb_face_t* built, hb_tag_t tag, const std::string& bytes) {
  const BlobPtr table(
      hb_blob_create(bytes.data(), static_cast<unsigned>(bytes.size()), HB_MEMORY_MODE_DUPLICATE, nullptr, nullptr));
  hb_face_builder_add_table(built, tag, table.get());
}

SubsetPtr coded_subset(const FontFace& face, const std::vector<CodedGlyph>& glyphs, bool packed) {
  const InputPtr input = subset_input();
  for (const CodedGlyph& coded : glyphs) hb_set_add(hb_subset_input_glyph_set(input.get()), coded.glyph);
  const PlanPtr plan(hb_subset_plan_create_or_fail(face.hb_face(), input.get()));
  if (!plan) subset_failure(face);
  const HbFacePtr made(hb_subset_plan_execute_or_fail(plan.get()));
  if (!made) subset_failure(face);
  // Once more from its bytes, because only a face made from bytes tells its tables.
  const BlobPtr bytes(hb_face_reference_blob(made.get()));
  const HbFacePtr cut(hb_face_create(bytes.get(), 0));

  const hb_map_t* renumbered = hb_subset_plan_old_to_new_glyph_mapping(plan.get());
  std::vector<unsigned> mapped;
  std::map<unsigned, unsigned> coded_width;
  for (const CodedGlyph& coded : glyphs) {
    mapped.push_back(hb_map_get(renumbered, coded.glyph));
    const double units = std::clamp(coded.width * face.units_per_em, 0.0, 65535.0);
    coded_width.emplace(mapped.back(), static_cast<unsigned>(std::lround(units)));
  }
  const Widths widths = coded_widths(cut.get(), coded_width);
  const std::map<hb_tag_t, std::string> own = {{HB_TAG('c', 'm', 'a', 'p'), code_map(mapped)},
                                               {HB_TAG('h', 'h', 'e', 'a'), widths.hhea},
                                               {HB_TAG('h', 'm', 't', 'x'), widths.hmtx}};
  const HbFacePtr built(hb_face_builder_create());
  std::array<hb_tag_t, 64> tags = {};
  unsigned count = tags.size();
  hb_face_get_table_tags(cut.get(), 0, &count, tags.data());
  for (unsigned i = 0; i < count; ++i) {
    if (own.contains(tags[i])) continue;
    const BlobPtr table(hb_face_reference_table(cut.get(), tags[i]));
    hb_face_builder_add_table(built.get(), tags[i], table.get());
  }
  for (const auto& [tag, table] : own) add_table(built.get(), tag, table);
  return finished(built.get(), packed);
}

// The subsets in use of late, by face and content.
class SubsetCache {
 public:
  template <class Make>
  SubsetPtr get(const FontFace& face, const std::string& content, bool packed, const Make& make) {
    const Key key{&face, packed, content};
    if (const auto found = subsets_.find(key); found != subsets_.end()) return found->second;
    if (subsets_.size() >= kMost) subsets_.clear();
    return subsets_.emplace(key, make()).first->second;
  }

 private:
  static constexpr std::size_t kMost = 256;  // of some 8 KB each
  using Key = std::tuple<const FontFace*, bool, std::string>;
  std::map<Key, SubsetPtr> subsets_;
};

SubsetCache& subset_cache() {
  static SubsetCache cache;
  return cache;
}

// Grown to whole classes of characters, so that the same few subsets serve most documents.
CodeSet whole_classes(CodeSet codes, const FontFace& face) {
  static const std::array<CodeSet, 4> kClasses = [] {
    std::array<CodeSet, 4> classes;  // digits and what stands between them, capitals, small letters, other ASCII
    for (unsigned c = 0x20; c < 0x7F; ++c) {
      const bool numeric = (c >= '0' && c <= '9') || std::string_view(" .,-/").find(static_cast<char>(c)) < 5;
      classes[numeric ? 0 : c >= 'A' && c <= 'Z' ? 1 : c >= 'a' && c <= 'z' ? 2 : 3].set(c);
    }
    return classes;
  }();
  for (const CodeSet& whole : kClasses)
    if ((codes & whole).any()) codes |= whole;
  for (unsigned code = 0; code < codes.size(); ++code)
    if (codes[code] && !face.has(of_win_ansi(static_cast<std::uint8_t>(code)))) codes.reset(code);
  return codes;
}

// ---- Font dictionaries

// Six letters that tell one subset of a font from another.
std::string subset_tag(std::string_view content) {
  std::uint32_t hash = 2166136261u;
  for (const char c : content) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
  std::string tag;
  for (int i = 0; i < 6; ++i, hash /= 26) tag += static_cast<char>('A' + hash % 26);
  return tag + '+';
}

// A name that viewers replace by a font of their own in the same style: "TimesNewRoman,Bold".
std::string name_with_style(const Face& face) {
  std::string name;
  for (const char c : face.family)
    if (is_letter_or_digit(c) || c == '-') name += c;
  if (face.bold || face.italic) name += ',';
  if (face.bold) name += "Bold";
  if (face.italic) name += "Italic";
  return name;
}

void put_entry(std::string& out, std::string_view key, double em) {
  out += key;
  put_number(out += ' ', em * 1000, 0);
}

constexpr int kSymbolic = 4;
constexpr int kNonsymbolic = 32;

std::string descriptor(const FontFace& face, const std::string& name, int flags, int file) {
  hb_face_t* const tables = face.hb_face();
  const Table head(tables, "head"), post(tables, "post"), os2(tables, "OS/2");
  const int serif = os2.u8(32) == 2 ? os2.u8(33) : 0;  // PANOSE: Latin text, kind of serif
  if (post.i16(12) != 0 || post.i16(14) != 0) flags |= 1;
  if (serif >= 2 && serif <= 10) flags |= 2;
  if (face.italic) flags |= 64;
  hb_position_t cap_height = 0;
  if (!hb_ot_metrics_get_position(face.hb_font(), HB_OT_METRICS_TAG_CAP_HEIGHT, &cap_height))
    cap_height = static_cast<hb_position_t>(0.7 * face.units_per_em);

  std::string out = "<</Type/FontDescriptor/FontName/" + name + "/Flags ";
  put_number(out, long{flags});
  out += "/FontBBox[";
  for (unsigned at = 36; at <= 42; at += 2) put_entry(out, "", head.i16(at) / face.units_per_em);
  out += "]/ItalicAngle ";
  put_number(out, long{post.i16(4)});
  put_entry(out, "/Ascent", face.ascent);
  put_entry(out, "/Descent", -face.descent);
  put_entry(out, "/CapHeight", cap_height / face.units_per_em);
  put_entry(out, "/StemV", face.bold ? 0.14 : 0.08);
  if (file != 0) out += "/FontFile2 " + reference(file);
  return out + ">>";
}

int write_font_file(PdfObjects& objects, const Subset& subset) {
  return objects.write_stream(subset.bytes, "/Length1 " + std::to_string(subset.length));
}

std::string subset_name(const FontFace& face, std::string_view content) {
  return subset_tag(content) + (face.postscript_name.empty() ? name_with_style(face) : face.postscript_name);
}

struct FontParts {
  std::string name;
  int first = 0;
  std::vector<double> widths;  // em units, from the first code
  std::string entries;         // encoding, map to characters
  int descriptor = 0;
};

int write_font(PdfObjects& objects, const FontParts& parts) {
  std::string out = "<</Type/Font/Subtype/TrueType/BaseFont/" + parts.name + "/FirstChar ";
  put_number(out, long{parts.first});
  put_number(out += "/LastChar ", static_cast<long>(parts.first) + static_cast<long>(parts.widths.size()) - 1);
  out += "/Widths[";
  for (const double width : parts.widths) {
    put_number(out, width * 1000, 2);
    out += ' ';
  }
  out.back() = ']';
  return objects.write(out + parts.entries + "/FontDescriptor " + reference(parts.descriptor) + ">>");
}

int write_latin(PdfObjects& objects, const LatinFont& font, bool embed) {
  const FontFace& face = *font.face;
  const CodeSet codes = whole_classes(font.codes, face);
  FontParts parts{name_with_style(face), 0, {}, "/Encoding/WinAnsiEncoding", 0};
  int file = 0;
  if (embed) {
    const std::string content = codes.to_string();
    const SubsetPtr subset =
        subset_cache().get(face, content, objects.packs(), [&] { return latin_subset(face, codes, objects.packs()); });
    parts.name = subset_name(face, content);
    file = write_font_file(objects, *subset);
  }
  parts.descriptor = objects.write(descriptor(face, parts.name, kNonsymbolic, file));
  const CodeSet shown = codes | font.codes;
  unsigned first = 0, last = 255;
  while (first < 255 && !shown[first]) ++first;
  while (last > first && !shown[last]) --last;
  parts.first = static_cast<int>(first);
  for (unsigned code = first; code <= last; ++code)
    parts.widths.push_back(shown[code] ? double{face.metric(of_win_ansi(static_cast<std::uint8_t>(code))).advance} : 0);
  return write_font(objects, parts);
}

std::string to_unicode(const CodedFont& font) {
  constexpr std::size_t kBlock = 100;  // entries that one block may hold
  std::string map =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo <</Registry(Adobe)/Ordering(UCS)/Supplement 0>> def\n"
      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n1 begincodespacerange\n<00> <FF>\nendcodespacerange\n";
  for (std::size_t start = 0; start < font.glyphs.size(); start += kBlock) {
    const std::size_t stop = std::min(start + kBlock, font.glyphs.size());
    map += std::to_string(stop - start) + " beginbfchar\n";
    for (std::size_t i = start; i < stop; ++i) {
      put_hex(map += '<', static_cast<unsigned>(i + 1), 2);
      put_utf16(map += "> <", font.glyphs[i].characters);
      map += ">\n";
    }
    map += "endbfchar\n";
  }
  return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

int write_coded(PdfObjects& objects, const CodedFont& font) {
  const FontFace& face = *font.face;
  std::string content;
  FontParts parts{{}, 1, {}, {}, 0};
  for (const CodedGlyph& coded : font.glyphs) {
    put_u16(content, coded.glyph);
    put_number(content, coded.width, 4);
    parts.widths.push_back(coded.width);
  }
  const SubsetPtr subset = subset_cache().get(face, content, objects.packs(),
                                              [&] { return coded_subset(face, font.glyphs, objects.packs()); });
  parts.name = subset_name(face, content + font.resource);
  parts.descriptor = objects.write(descriptor(face, parts.name, kSymbolic, write_font_file(objects, *subset)));
  if (objects.packs())  // as old as Flate
    parts.entries = "/ToUnicode " + reference(objects.write_stream(deflated(to_unicode(font))));
  return write_font(objects, parts);
}

}  // namespace

LatinFont& PdfFontUse::latin(const Face& face) {
  for (const auto& font : latin_)
    if (font->face == &face) return *font;
  latin_.push_back(std::make_unique<LatinFont>(LatinFont{&engine::font_face(face), resource_name(face), {}}));
  return *latin_.back();
}

bool CodedFont::takes(const CodedGlyph& wanted) const {
  return glyphs.size() < 255 && std::none_of(glyphs.begin(), glyphs.end(), [&](const CodedGlyph& held) {
           return held.glyph == wanted.glyph && held.width != wanted.width;
         });
}

PdfFontUse::Code PdfFontUse::code(const Face& face, CodedGlyph glyph) {
  auto key = std::pair(&face, std::move(glyph));
  if (const auto found = known_codes_.find(key); found != known_codes_.end()) return found->second;
  CodedFont* font = nullptr;
  std::size_t of_face = 1;
  for (const auto& other : coded_) {
    if (other->face != &face) continue;
    if (!font && other->takes(key.second)) font = other.get();
    ++of_face;
  }
  if (!font) {
    const std::string name = resource_name(face) + '.' + std::to_string(of_face);
    coded_.push_back(std::make_unique<CodedFont>(CodedFont{&engine::font_face(face), name, {}}));
    font = coded_.back().get();
  }
  font->glyphs.push_back(key.second);
  return known_codes_.emplace(std::move(key), Code{font, static_cast<std::uint8_t>(font->glyphs.size())}).first->second;
}

void PdfFontUse::add(const PdfFontUse& other) {
  for (const auto& font : other.latin_) latin(*font->face).codes |= font->codes;
}

NeverEmbed::NeverEmbed(std::string_view names) {
  while (!names.empty()) {
    const std::size_t end = std::min(names.find(';'), names.size());
    const std::string_view name = value::trim(names.substr(0, end));
    if (!name.empty()) families_.insert(value::lower_name(name));
    names.remove_prefix(std::min(end + 1, names.size()));
  }
}

bool NeverEmbed::has(const Face& face) const {
  return families_.contains(value::lower_name(face.family)) || families_.contains(value::lower_name(face.own_family));
}

std::string write_fonts(PdfObjects& objects, const PdfFontUse& use, const NeverEmbed& left_out) {
  std::string entries;
  for (const auto& font : use.latin_fonts())
    entries += '/' + font->resource + ' ' + reference(write_latin(objects, *font, !left_out.has(*font->face)));
  // No viewer has these codes in a font of its own, so these fonts always go into the file.
  for (const auto& font : use.coded_fonts())
    entries += '/' + font->resource + ' ' + reference(write_coded(objects, *font));
  return entries;
}

}  // namespace dorvo::export_
