#pragma once

// Decoders from sound files to plain samples, one for each format tag that the engine knows. They are shared:
// one decodes, its samples are taken, and it is flushed.

#include <memory>
#include <sndfile.h>
#include <vector>

#include "sound/wave_file.h"

namespace footlight {

class CFile;

class CSoundCodec {
 public:
  CSoundCodec() = default;
  CSoundCodec(const CSoundCodec&) = delete;
  CSoundCodec& operator=(const CSoundCodec&) = delete;
  virtual ~CSoundCodec() = default;

  void flush() { buffer_.clear(); }
  // From the start of an open file. What cannot be decoded leaves no samples.
  virtual void decode(CFile* file) = 0;
  // Of the samples that were decoded last.
  const tWAVEFORMATEX* getDesc() const { return &format_; }
  const std::vector<std::byte>& getBuffer() const { return buffer_; }

  static void init_codecs();
  static void done_codecs();
  // By a wave file's format tag; null for one that is not known.
  static CSoundCodec* getCodec(int tag);

 protected:
  tWAVEFORMATEX format_;
  std::vector<std::byte> buffer_;
};

class CSoundCodec_PCM final : public CSoundCodec {
 public:
  void decode(CFile* file) override;
};

// Everything else is decoded by libsndfile, by the file's own path on the disk.
class CSoundCodec_ADPCM final : public CSoundCodec {
 public:
  void decode(CFile* file) override;

 private:
  static constexpr decltype(&::sf_close) sf_close = &::sf_close;
  static constexpr decltype(&::sf_open) sf_open = &::sf_open;
  static constexpr decltype(&::sf_readf_short) sf_readf_short = &::sf_readf_short;
};

}  // namespace footlight
