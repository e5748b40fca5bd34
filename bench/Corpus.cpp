// Reading the corpus for the benchmarks.
#include "Corpus.h"

#include <dirent.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

namespace zelvo_bench {

std::string corpusDir() {
  const char* fromEnvironment = std::getenv("ZELVO_CORPUS_DIR");
  return fromEnvironment != nullptr ? fromEnvironment : ZELVO_CORPUS_DIR;
}

namespace {

std::vector<CorpusFile> filesIn(const std::string& dir,
                                const std::string& suffix) {
  std::vector<CorpusFile> files;
  DIR* handle = opendir(dir.c_str());
  if (handle == nullptr) return files;
  while (dirent* entry = readdir(handle)) {
    std::string name = entry->d_name;
    if (name.size() <= suffix.size() ||
        name.compare(name.size() - suffix.size(), suffix.size(), suffix) != 0)
      continue;
    std::ifstream in(dir + "/" + name, std::ios::binary);
    if (!in) continue;
    std::ostringstream content;
    content << in.rdbuf();
    files.push_back({name, content.str()});
  }
  closedir(handle);
  std::sort(
      files.begin(), files.end(),
      [](const CorpusFile& a, const CorpusFile& b) { return a.name < b.name; });
  return files;
}

}  // namespace

std::vector<CorpusFile> corpusFiles(const std::string& suffix) {
  return filesIn(corpusDir(), suffix);
}

std::vector<CorpusFile> corpusAndExtraTexts(const std::string& suffix) {
  std::vector<CorpusFile> files = corpusFiles(suffix);
  // The extra texts are all UTF-8, each a <script>.txt of its own.
  if (suffix != ".utf8.txt") return files;
  const char* fromEnvironment = std::getenv("ZELVO_BENCH_TEXTS_DIR");
  const std::string plain = ".txt";
  for (CorpusFile& file : filesIn(
           fromEnvironment != nullptr ? fromEnvironment : ZELVO_BENCH_TEXTS_DIR,
           plain)) {
    // Named as a corpus file is, so that callers name every text alike.
    file.name = file.name.substr(0, file.name.size() - plain.size()) + suffix;
    const std::string once = file.bytes;
    while (!once.empty() && file.bytes.size() < (100u << 10))
      file.bytes += once;
    files.push_back(std::move(file));
  }
  return files;
}

}  // namespace zelvo_bench
