#include "engine/text.h"

#include <hb.h>

#include <algorithm>
#include <array>

#include "engine/fonts.h"
#include "engine/utf8.h"

namespace dorvo::engine {
namespace {

// Characters that stand as their plain glyph when ligatures and kerning are off: Latin, Greek and Cyrillic letters,
// general punctuation, currency signs. Everything else goes through the shaper.
bool is_plain(char32_t character) {
  return (character < 0x300 && character != 0xAD) || (character >= 0x370 && character < 0x530) ||
         (character >= 0x2010 && character < 0x2028) || (character >= 0x2030 && character < 0x205F) ||
         (character >= 0x20A0 && character < 0x20D0) || (character >= 0x2100 && character < 0x2300);
}

// Characters that belong to the one before them: joiners, variation selectors, combining marks.
bool joins_previous(char32_t character) {
  return character == 0x200C || character == 0x200D || (character >= 0xFE00 && character < 0xFE10) ||
         (character >= 0x300 && character < 0x370);
}

bool is_invisible(char32_t character) {
  return character < 0x20 || character == 0x7F || character == 0xAD || character == 0xFEFF;
}

// A stretch of a line in one face.
struct Stretch {
  const FontFace* face = nullptr;
  std::string text;
  bool plain = true;
};

// Cuts a line without line ends into stretches. Blanks between two words of a fallback face stay with them; other
// blanks go to the wanted face.
class Stretches {
 public:
  Stretches(std::string_view line, const FontFace& wanted) : wanted_(wanted) {
    for (std::size_t at = 0; at < line.size();) {
      const char32_t character = next_char(line, at);
      if (character == ' ' || character == '\t')
        add_blank();
      else if (!is_invisible(character))
        add(character);
    }
    if (blanks_ > 0) give_back_blanks();
  }
  std::vector<Stretch> take() { return std::move(stretches_); }

 private:
  void add(char32_t character) {
    const bool joins = joins_previous(character) && !stretches_.empty();
    const FontFace& face = joins                    ? *stretches_.back().face
                           : wanted_.has(character) ? wanted_
                                                    : fallback_face(wanted_, character);
    const bool plain = is_plain(character);
    if (stretches_.empty() || stretches_.back().face != &face) {
      give_back_blanks();
      open(face, plain);
    } else if (stretches_.back().plain != plain && !joins) {
      open(face, plain);
    }
    Stretch& last = stretches_.back();
    last.plain = last.plain && plain;
    append_char(last.text, character);
    blanks_ = 0;
  }

  void add_blank() {
    if (stretches_.empty()) open(wanted_, true);
    const bool stays = stretches_.back().face->has(' ');
    if (!stays) open(wanted_, true);
    stretches_.back().text += ' ';
    if (stretches_.back().face != &wanted_) ++blanks_;
  }

  // The words in a fallback face are over: the blanks behind them are the wanted face's.
  void give_back_blanks() {
    if (blanks_ == 0) return;
    Stretch& last = stretches_.back();
    last.text.resize(last.text.size() - blanks_);
    stretches_.push_back({&wanted_, std::string(blanks_, ' '), true});
    blanks_ = 0;
  }

  void open(const FontFace& face, bool plain) {
    if (stretches_.empty() || stretches_.back().face != &face || stretches_.back().plain != plain)
      stretches_.push_back({&face, {}, plain});
  }

  const FontFace& wanted_;
  std::vector<Stretch> stretches_;
  std::size_t blanks_ = 0;  // at the end of a stretch in a fallback face, as long as what follows is not known
};

// Glyphs for the run's text, each as it stands without shaping.
void set_plain_glyphs(GlyphRun& run, const FontFace& face) {
  run.glyphs.reserve(run.text.size());
  for (std::size_t at = 0; at < run.text.size();) {
    const auto cluster = static_cast<std::uint32_t>(at);
    const FontFace::Metric& metric = face.metric(next_char(run.text, at));
    run.glyphs.push_back({metric.glyph, metric.advance, 0, 0, cluster});
    run.width += metric.advance;
  }
}

GlyphRun plain_run(Stretch&& stretch) {
  GlyphRun run{stretch.face, std::move(stretch.text), {}, 0};
  set_plain_glyphs(run, *stretch.face);
  return run;
}

// Whether a line is one stretch of plain ASCII, as nearly every line is.
bool is_simple(std::string_view line, const FontFace& face) {
  return std::all_of(line.begin(), line.end(),
                     [&](char c) { return c >= 0x20 && c < 0x7F && face.has(static_cast<char32_t>(c)); });
}

GlyphRun shaped_run(Stretch&& stretch) {
  static hb_buffer_t* const kBuffer = hb_buffer_create();
  // Letters of a box keep their own widths; the scripts that need joining are shaped in full.
  static const hb_feature_t kLatin[] = {{HB_TAG('l', 'i', 'g', 'a'), 0, 0, HB_FEATURE_GLOBAL_END},
                                        {HB_TAG('c', 'l', 'i', 'g'), 0, 0, HB_FEATURE_GLOBAL_END},
                                        {HB_TAG('k', 'e', 'r', 'n'), 0, 0, HB_FEATURE_GLOBAL_END}};
  GlyphRun run{stretch.face, std::move(stretch.text), {}, 0};
  hb_buffer_reset(kBuffer);
  hb_buffer_add_utf8(kBuffer, run.text.data(), static_cast<int>(run.text.size()), 0, -1);
  hb_buffer_guess_segment_properties(kBuffer);
  const bool devanagari = hb_buffer_get_script(kBuffer) == HB_SCRIPT_DEVANAGARI;
  const bool latin = hb_buffer_get_script(kBuffer) == HB_SCRIPT_LATIN;
  // Marathi has its own forms of some letters; never the machine's locale.
  hb_buffer_set_language(kBuffer, hb_language_from_string(devanagari ? "mr" : "en", -1));
  hb_shape(stretch.face->hb_font(), kBuffer, latin ? kLatin : nullptr, latin ? unsigned{std::size(kLatin)} : 0);

  unsigned count = 0;
  const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(kBuffer, &count);
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(kBuffer, &count);
  const auto em = [&](hb_position_t units) { return static_cast<float>(units / stretch.face->units_per_em); };
  run.glyphs.reserve(count);
  for (unsigned i = 0; i < count; ++i) {
    run.glyphs.push_back({static_cast<std::uint16_t>(infos[i].codepoint), em(positions[i].x_advance),
                          em(positions[i].x_offset), em(positions[i].y_offset), infos[i].cluster});
    run.width += em(positions[i].x_advance);
  }
  return run;
}

std::vector<GlyphRun> runs_of(std::string_view line, const FontFace& face) {
  std::vector<GlyphRun> runs;
  if (line.empty()) return runs;
  if (is_simple(line, face)) {
    set_plain_glyphs(runs.emplace_back(GlyphRun{&face, std::string(line), {}, 0}), face);
    return runs;
  }
  for (Stretch& stretch : Stretches(line, face).take())
    runs.push_back(stretch.plain ? plain_run(std::move(stretch)) : shaped_run(std::move(stretch)));
  return runs;
}

// A glyph of a line that is to be cut into lines.
struct Spot {
  std::uint32_t run = 0;
  std::uint32_t glyph = 0;
  float advance = 0;
  bool blank = false;
  bool starts = false;  // its cluster: a line may be cut before it
};

// A run of a script that reads from right to left is never cut: its words stand in another order than its glyphs.
bool reads_backwards(const GlyphRun& run) {
  return run.glyphs.size() > 1 && run.glyphs.front().cluster > run.glyphs.back().cluster;
}

std::vector<Spot> spots_of(const std::vector<GlyphRun>& runs) {
  std::vector<Spot> spots;
  for (std::uint32_t r = 0; r < runs.size(); ++r) {
    const std::vector<Glyph>& glyphs = runs[r].glyphs;
    const bool whole = reads_backwards(runs[r]);
    for (std::uint32_t g = 0; g < glyphs.size(); ++g)
      spots.push_back({r, g, glyphs[g].advance, !whole && runs[r].text[glyphs[g].cluster] == ' ',
                       g == 0 || (!whole && glyphs[g].cluster != glyphs[g - 1].cluster)});
  }
  return spots;
}

// The glyphs [from, to) of a run as a run of their own.
GlyphRun slice(const GlyphRun& run, std::size_t from, std::size_t to) {
  if (from == 0 && to == run.glyphs.size()) return run;
  const std::uint32_t start = run.glyphs[from].cluster;
  const std::size_t stop = to < run.glyphs.size() ? run.glyphs[to].cluster : run.text.size();
  GlyphRun part{run.face, run.text.substr(start, stop - start), {}, 0};
  part.glyphs.assign(run.glyphs.begin() + static_cast<std::ptrdiff_t>(from),
                     run.glyphs.begin() + static_cast<std::ptrdiff_t>(to));
  for (Glyph& glyph : part.glyphs) {
    glyph.cluster -= start;
    part.width += glyph.advance;
  }
  return part;
}

TextLine line_of(const std::vector<GlyphRun>& runs, const std::vector<Spot>& spots, std::size_t from, std::size_t to) {
  TextLine line;
  while (to > from && spots[to - 1].blank) --to;
  for (std::size_t first = from; first < to;) {
    std::size_t last = first;
    while (last < to && spots[last].run == spots[first].run) ++last;
    line.runs.push_back(slice(runs[spots[first].run], spots[first].glyph, spots[last - 1].glyph + std::size_t{1}));
    line.width += line.runs.back().width;
    first = last;
  }
  return line;
}

// Where the line that starts at `from` ends, and where the next one starts.
struct Cut {
  std::size_t end = 0;
  std::size_t next = 0;
};

Cut cut_line(const std::vector<Spot>& spots, std::size_t from, float limit) {
  Cut at_word;  // the last word end that fits
  float width = 0;
  bool word = false;
  std::size_t i = from;
  for (; i < spots.size(); ++i) {
    if (spots[i].blank && word && !spots[i - 1].blank) at_word.end = i;
    if (spots[i].blank && word) at_word.next = i + 1;
    if (!spots[i].blank) {
      if (word && width + spots[i].advance > limit) break;
      word = true;
    }
    width += spots[i].advance;
  }
  if (i == spots.size()) return {i, i};
  if (at_word.next > 0) return at_word;
  while (i > from + 1 && !spots[i].starts) --i;
  while (i < spots.size() && !spots[i].starts) ++i;  // never inside a cluster, even one that is too wide alone
  std::size_t next = i;
  while (next < spots.size() && spots[next].blank) ++next;
  return {i, next};
}

void add_lines(std::string_view text, const FontFace& face, float limit, ShapedText& shaped) {
  std::vector<GlyphRun> runs = runs_of(text, face);
  const bool ends_blank = !runs.empty() && runs.back().text.back() == ' ';
  if (limit <= 0 && !ends_blank) {
    TextLine line{std::move(runs), 0};
    for (const GlyphRun& run : line.runs) line.width += run.width;
    shaped.lines.push_back(std::move(line));
    return;
  }
  const std::vector<Spot> spots = spots_of(runs);
  std::size_t from = 0;
  do {
    const Cut cut = limit > 0 ? cut_line(spots, from, limit) : Cut{spots.size(), spots.size()};
    shaped.lines.push_back(line_of(runs, spots, from, cut.end));
    from = cut.next;
  } while (from < spots.size());
}

void measure(ShapedText& shaped, const FontFace& face) {
  double ascent = face.ascent;
  double descent = face.descent;
  double gap = face.line_gap;
  for (const TextLine& line : shaped.lines) {
    shaped.widest = std::max(shaped.widest, line.width);
    for (const GlyphRun& run : line.runs) {
      ascent = std::max(ascent, run.face->ascent);
      descent = std::max(descent, run.face->descent);
      gap = std::max(gap, run.face->line_gap);
    }
  }
  shaped.ascent = static_cast<float>(ascent);
  shaped.descent = static_cast<float>(descent);
  shaped.line_height = static_cast<float>(ascent + descent + gap);
}

ShapedPtr shape_anew(std::string_view text, const FontFace& face, float limit) {
  auto shaped = std::make_shared<ShapedText>();
  if (text.empty()) {
    measure(*shaped, face);
    return shaped;
  }
  for (std::size_t from = 0; from <= text.size();) {
    std::size_t end = text.find_first_of("\r\n", from);
    if (end == std::string_view::npos) end = text.size();
    add_lines(text.substr(from, end - from), face, limit, *shaped);
    from = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
  }
  measure(*shaped, face);
  return shaped;
}

// Keeps what was used of late. A text has its place in one small set, which the latest four share.
class ShapeCache {
 public:
  ShapedPtr get(std::string_view text, const FontFace& face, float limit) {
    if (text.size() > kLongest) return shape_anew(text, face, limit);
    const std::size_t hash = std::hash<std::string_view>()(text) ^ (std::hash<const void*>()(&face) * 31) ^
                             (std::hash<float>()(limit) * 127);
    Set& set = sets_[hash % kSets];
    auto found = std::find_if(set.begin(), set.end(), [&](const Entry& entry) {
      return entry.shaped && entry.hash == hash && entry.face == &face && entry.limit == limit && entry.text == text;
    });
    if (found == set.end()) {
      ShapedPtr shaped = shape_anew(text, face, limit);
      *--found = Entry{hash, &face, limit, std::string(text), std::move(shaped)};
    }
    std::rotate(set.begin(), found, found + 1);
    return set.front().shaped;
  }

 private:
  static constexpr std::size_t kSets = 1024;
  static constexpr std::size_t kLongest = 512;  // bytes; longer texts hardly come twice
  struct Entry {
    std::size_t hash = 0;
    const FontFace* face = nullptr;
    float limit = 0;  // em units, 0 when nothing had to be wrapped
    std::string text;
    ShapedPtr shaped;
  };
  using Set = std::array<Entry, 4>;  // the latest first
  std::vector<Set> sets_ = std::vector<Set>(kSets);
};

// Between the rule around a box and its text, twips.
constexpr int kBorderInset = 40;

}  // namespace

int text_inset(const ControlLayout& control) {
  return control.border ? kBorderInset : 0;
}

double text_height(const ShapedText& shaped, int half_points) {
  if (shaped.lines.empty()) return 0;
  const auto steps = static_cast<double>(shaped.lines.size() - 1);
  return twips_of(steps * shaped.line_height + shaped.ascent + shaped.descent, half_points);
}

ShapedPtr shape(std::string_view text, const Style& style, int half_points, int width) {
  static ShapeCache cache;
  const FontFace& face = choose_face(style.font, style.bold, style.italic);
  const ShapedPtr whole = cache.get(text, face, 0);
  if (width <= 0 || twips_of(whole->widest, half_points) <= width) return whole;
  return cache.get(text, face, static_cast<float>(width / twips_of(1, half_points)));
}

}  // namespace dorvo::engine
