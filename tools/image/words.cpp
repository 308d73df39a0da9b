#include "words.h"

#include <utility>

#include "command_line.h"

namespace footlight::image {

namespace {

struct AlphaWord {
  const char* word;
  AlphaPlane alpha;
};
constexpr AlphaWord kAlphas[] = {
    {"auto", AlphaPlane::asNeeded}, {"always", AlphaPlane::always}, {"never", AlphaPlane::never}};

template <class Rows>
std::vector<std::string> wordsOf(const Rows& rows) {
  std::vector<std::string> words;
  for (const auto& row : rows) words.emplace_back(row.word);
  return words;
}

// What was typed, as far as it is more than a value of its own.
struct Typed {
  Options options;
  std::string packing = "none";
  std::string alpha = "auto";
  std::vector<int> position;
};

void addOptions(CLI::App& app, Typed& typed) {
  Options& options = typed.options;
  app.set_help_flag("--help", "print this and leave");
  app.add_option("INPUT", options.input, "a PNG, IMG, TGA, BMP, JPEG or PSD file")->required()->type_name("");
  app.add_option("OUTPUT", options.output,
                 "the file to write: NAME.img or NAME.png; of a PSD file the folder for its layers and "
                 "layers.cnv, the "
                 "lines that show them")
      ->type_name("");
  app.add_flag("--info", options.isInfo, "print what INPUT holds; nothing is written");
  app.add_option("--format", options.form.bpp, "bits per pixel of an IMG file (default: 16)")
      ->check(CLI::IsMember({15, 16}))
      ->type_name("BITS");
  app.add_option("--compression", typed.packing, "of an IMG file (default: none)")
      ->check(CLI::IsMember(wordsOf(kPackings)))
      ->type_name("FORM");
  app.add_option("--quality", options.form.quality, "of JPEG colours (default: 90)")
      ->check(CLI::Range(1, 100))
      ->type_name("NUMBER");
  app.add_option("--alpha", typed.alpha,
                 "when an IMG file gets an alpha plane; auto: when a pixel is not opaque (default: auto)")
      ->check(CLI::IsMember(wordsOf(kAlphas)))
      ->type_name("WHEN");
  app.add_option("--position", typed.position, "where an IMG file stands (default: as INPUT says, else 0 0)")
      ->expected(2)
      ->type_name("X Y");
}

Parsed refused(const std::string& what) { return {std::nullopt, kNoWork, "footlight-image: " + what + "\n"}; }

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Typed typed;
  CLI::App app(
      "Converts pictures between PNG and the engine's IMG files, and other programs' pictures into these. "
      "The exit status is 0 when that was done, 2 when not.",
      "footlight-image");
  addOptions(app, typed);
  if (auto answer = tools::answerTo(app, count, words, kNoWork))
    return {std::nullopt, answer->exitStatus, std::move(answer->message)};
  Options& options = typed.options;
  if (options.isInfo != options.output.empty()) {
    return refused(options.isInfo ? "--info writes no file: " + options.output : "OUTPUT is required");
  }
  for (const PackingWord& row : kPackings) {
    if (typed.packing == row.word) options.form.packing = row.packing;
  }
  for (const AlphaWord& row : kAlphas) {
    if (typed.alpha == row.word) options.form.alpha = row.alpha;
  }
  if (typed.position.size() == 2) options.position = CXPoint(typed.position[0], typed.position[1]);
  return {std::move(options), kDone, {}};
}

}  // namespace footlight::image
