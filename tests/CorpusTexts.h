// The UTF-8 files of the corpus, for the conversion tests that run over real
// text of many scripts.
#pragma once

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// Every *.utf8.txt of the corpus in $ZELVO_CORPUS_DIR; none if it is unset.
inline std::vector<std::string> corpusTexts() {
  std::vector<std::string> texts;
  const char* dir = std::getenv("ZELVO_CORPUS_DIR");
  if (dir == nullptr) return texts;
  for (const char* name :
       {"arabic", "chinese", "czech", "english", "esperanto", "french",
        "german", "greek", "hebrew", "hindi", "japanese", "korean", "persan",
        "portuguese", "russian", "thai", "turkish", "vietnamese"}) {
    std::ifstream in(std::string(dir) + "/" + name + ".utf8.txt",
                     std::ios::binary);
    if (!in) continue;
    std::ostringstream content;
    content << in.rdbuf();
    texts.push_back(content.str());
  }
  return texts;
}
