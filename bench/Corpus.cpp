// Reading the corpus for the benchmarks.
#include "Corpus.h"

#include <dirent.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace zelvo_bench {

std::string corpusDir() {
  const char* fromEnvironment = std::getenv("ZELVO_CORPUS_DIR");
  return fromEnvironment != nullptr ? fromEnvironment : ZELVO_CORPUS_DIR;
}

std::vector<CorpusFile> corpusFiles(const std::string& suffix) {
  std::vector<CorpusFile> files;
  const std::string dir = corpusDir();
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

}  // namespace zelvo_bench
