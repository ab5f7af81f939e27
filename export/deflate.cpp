#include "export/deflate.h"

#include <libdeflate.h>

#include <new>

#include "value/handle.h"

namespace dorvo::export_ {
namespace {

constexpr int kLevel = 6;

}  // namespace

std::string deflated(std::string_view bytes) {
  static const value::Handle<libdeflate_compressor, libdeflate_free_compressor> kCompressor(
      libdeflate_alloc_compressor(kLevel));
  if (!kCompressor) throw std::bad_alloc();
  std::string packed(libdeflate_zlib_compress_bound(kCompressor.get(), bytes.size()), '\0');
  packed.resize(libdeflate_zlib_compress(kCompressor.get(), bytes.data(), bytes.size(), packed.data(), packed.size()));
  return packed;
}

std::uint32_t checksum(std::string_view bytes) {
  return libdeflate_crc32(0, bytes.data(), bytes.size());
}

}  // namespace dorvo::export_
