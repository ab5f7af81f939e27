#include "export/pdf_writer.h"

#include <algorithm>
#include <list>

#include "export/deflate.h"
#include "export/pdf_content.h"

namespace dorvo::export_ {

namespace {

// The fixed items of a page as a finished stream.
struct FixedLayer {
  std::string bytes;  // empty when it cannot stand alone
  PdfFontUse use;
};
using FixedPtr = std::shared_ptr<const FixedLayer>;

// The fixed layers drawn of late, the latest first.
class FixedLayers {
 public:
  template <class Draw>
  FixedPtr get(const engine::Page& page, bool packed, const Draw& draw) {
    const auto found = std::find_if(layers_.begin(), layers_.end(), [&](const Kept& kept) {
      return kept.key == page.fixed_key && kept.height == page.height && kept.packed == packed &&
             kept.layouts == page.layouts;
    });
    if (found != layers_.end()) {
      layers_.splice(layers_.begin(), layers_, found);
      return found->layer;
    }
    layers_.push_front({page.fixed_key, page.height, packed, page.layouts, draw()});
    if (layers_.size() > kMost) layers_.pop_back();
    return layers_.front().layer;
  }

 private:
  static constexpr std::size_t kMost = 64;
  struct Kept {
    std::uint64_t key;
    int height;
    bool packed;
    std::vector<engine::LayoutPtr> layouts;  // held, so that no other layout takes their addresses
    FixedPtr layer;
  };
  std::list<Kept> layers_;
};

FixedLayers& fixed_layers() {
  static FixedLayers layers;
  return layers;
}

constexpr std::size_t kMostLayers = 256;  // of one document

void put_points(std::string& out, int twips) {
  put_number(out, twips / 20.0, 2);
}

}  // namespace

PdfWriter::PdfWriter(ByteSink sink, PdfVersion version, NeverEmbed left_out)
    : objects_(std::move(sink), version),
      left_out_(std::move(left_out)),
      catalog_(objects_.reserve()),
      tree_(objects_.reserve()),
      resources_(objects_.reserve()) {}

std::string PdfWriter::packed(std::string content) const {
  return objects_.packs() ? deflated(content) : content;
}

// The stream of the page's fixed layer in this document; 0: it has none apart.
int PdfWriter::fixed_object(const engine::Page& page) {
  if (page.fixed_key == 0) return 0;
  const FixedPtr layer = fixed_layers().get(page, objects_.packs(), [&] {
    auto drawn = std::make_shared<FixedLayer>();
    PdfContent content(page.height, objects_.packs(), drawn->use);
    engine::paint(page, content, engine::Layer::Fixed);
    // Codes of glyphs are a matter of the whole document.
    if (!drawn->use.has_coded()) drawn->bytes = packed(content.take());
    return drawn;
  });
  if (layer->bytes.empty()) return 0;
  // A list whose every page is ruled anew is not to be remembered whole.
  if (fixed_objects_.size() > kMostLayers) fixed_objects_.clear();
  int& object = fixed_objects_[layer->bytes];
  if (object == 0) {
    object = objects_.write_stream(layer->bytes);
    use_.add(layer->use);
  }
  return object;
}

void PdfWriter::page(const engine::Page& page) {
  const int fixed = fixed_object(page);
  PdfContent content(page.height, objects_.packs(), use_);
  engine::paint(page, content, fixed == 0 ? engine::Layer::All : engine::Layer::Data);
  const int data = objects_.write_stream(packed(content.take()));

  std::string out = "<</Type/Page/Parent " + reference(tree_) + "/MediaBox[0 0 ";
  put_points(out, page.width);
  put_points(out += ' ', page.height);
  out += "]/Contents";
  out += fixed == 0 ? ' ' + reference(data) : '[' + reference(fixed) + ' ' + reference(data) + ']';
  pages_.push_back(objects_.write(out += ">>"));
}

void PdfWriter::end() {
  objects_.write(resources_, "<</ProcSet[/PDF/Text]/Font<<" + write_fonts(objects_, use_, left_out_) + ">>>>");
  std::string kids;
  for (const int number : pages_) kids += (kids.empty() ? "" : " ") + reference(number);
  objects_.write(tree_, "<</Type/Pages/Count " + std::to_string(pages_.size()) + "/Resources " + reference(resources_) +
                            "/Kids[" + kids + "]>>");
  objects_.write(catalog_, "<</Type/Catalog/Pages " + reference(tree_) + ">>");
  objects_.finish(catalog_);
}

}  // namespace dorvo::export_
