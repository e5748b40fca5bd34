// The corpus of real text that the benchmarks run over.
#pragma once

#include <string>
#include <vector>

namespace zelvo_bench {

struct CorpusFile {
  std::string name;   // the file name, such as "english.utf8.txt"
  std::string bytes;  // the whole file
};

// The folder of the corpus: $ZELVO_CORPUS_DIR, or the one compiled in.
std::string corpusDir();

// Every file of the corpus whose name ends in suffix (".utf8.txt",
// ".latin1.txt"), sorted by name; files that are absent are left out.
std::vector<CorpusFile> corpusFiles(const std::string& suffix);

// The corpus files, then, for ".utf8.txt", the texts of bench/texts/ (texts
// of scripts that the corpus lacks, written for the benchmarks, in files
// named <script>.txt; the folder is compiled in, and may be overridden by
// $ZELVO_BENCH_TEXTS_DIR), named as corpus files are and each repeated to
// about the size of a corpus file (100 KiB), so that no row times only a
// call's fixed costs.
std::vector<CorpusFile> corpusAndExtraTexts(const std::string& suffix);

}  // namespace zelvo_bench
