#include "words.h"

#include <CLI/CLI.hpp>
#include <map>

namespace footlight::image {

namespace {

std::map<std::string, _compression> packings() {
  std::map<std::string, _compression> words;
  for (const PackingWord& row : kPackings) words[row.word] = row.packing;
  return words;
}

void addOptions(CLI::App& app, Options& options, std::vector<int>& position) {
  const std::map<std::string, AlphaPlane> alphas = {
      {"auto", AlphaPlane::asNeeded}, {"always", AlphaPlane::always}, {"never", AlphaPlane::never}};
  app.set_help_flag("--help", "print this and leave");
  app.add_option("INPUT", options.input, "a PNG or IMG file")->required()->type_name("");
  app.add_option("OUTPUT", options.output, "the file to write: NAME.img or NAME.png")->type_name("");
  app.add_flag("--info", options.isInfo, "print what INPUT holds; nothing is written");
  app.add_option("--format", options.form.bpp, "bits per pixel of an IMG file, 15 or 16 (default: 16)")
      ->check(CLI::IsMember({15, 16}))
      ->type_name("BITS");
  app.add_option("--compression", options.form.packing,
                 "of an IMG file: none, lzo, lzo-rle, rle or jpeg (default: none)")
      ->transform(CLI::Transformer(packings()))
      ->type_name("FORM");
  app.add_option("--quality", options.form.quality, "of JPEG colours, 1 to 100 (default: 90)")
      ->check(CLI::Range(1, 100))
      ->type_name("NUMBER");
  app.add_option("--alpha", options.form.alpha,
                 "an alpha plane in an IMG file: auto (where a pixel is not opaque), always or never")
      ->transform(CLI::Transformer(alphas))
      ->type_name("WHEN");
  app.add_option("--position", position, "where an IMG file stands (default: as INPUT says, else 0 0)")
      ->expected(2)
      ->type_name("X Y");
}

Parsed refused(const std::string& what) { return {std::nullopt, kNoWork, "footlight-image: " + what + "\n"}; }

}  // namespace

Parsed parseWords(int count, const char* const* words) {
  Options options;
  std::vector<int> position;
  CLI::App app(
      "Converts pictures between PNG and the engine's IMG files. The exit status is 0 when that was done, 2 "
      "when not.",
      "footlight-image");
  addOptions(app, options, position);
  try {
    app.parse(count, words);
  } catch (const CLI::CallForHelp&) {
    return {std::nullopt, kDone, app.help()};
  } catch (const CLI::ParseError& error) {
    return refused(error.what());
  }
  if (options.isInfo != options.output.empty()) {
    return refused(options.isInfo ? "--info writes no file: " + options.output : "OUTPUT is required");
  }
  if (position.size() == 2) options.position = CXPoint(position[0], position[1]);
  return {std::move(options), kDone, {}};
}

}  // namespace footlight::image
