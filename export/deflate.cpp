#include "export/deflate.h"

#include <libdeflate.h>

#include <memory>
#include <new>

namespace dorvo::export_ {
namespace {

constexpr int kLevel = 6;

struct Free {
  void operator()(libdeflate_compressor* held) const { libdeflate_free_compressor(held); }
};

}  // namespace

std::string deflated(std::string_view bytes) {
  static const std::unique_ptr<libdeflate_compressor, Free> kCompressor(libdeflate_alloc_compressor(kLevel));
  if (!kCompressor) throw std::bad_alloc();
  std::string packed(libdeflate_zlib_compress_bound(kCompressor.get(), bytes.size()), '\0');
  packed.resize(libdeflate_zlib_compress(kCompressor.get(), bytes.data(), bytes.size(), packed.data(), packed.size()));
  return packed;
}

std::uint32_t checksum(std::string_view bytes) {
  return libdeflate_crc32(0, bytes.data(), bytes.size());
}

}  // namespace dorvo::export_
