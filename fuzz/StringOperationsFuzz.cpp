// Fuzzes the editing, searching, comparison and operator members of String
// with a script of operations, run side by side on a std::u32string whose
// standard behaviour String promises, and compared after every step.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "fuzz/FuzzSupport.h"
#include "string/String.h"

using zelvo::unicode::String;
using namespace zelvo_fuzz;

namespace {

constexpr size_t kMaxSize = 4096;

std::u32string held(const String& s) {
  return std::u32string(s.begin(), s.end());
}

// Runs an edit on both sides. Either both throw std::out_of_range (and then
// neither changed) or neither does.
template <typename OnString, typename OnModel>
void both(String& s, std::u32string& m, OnString onString, OnModel onModel,
          const char* what) {
  const std::u32string before = m;
  bool stringThrew = false, modelThrew = false;
  try {
    onString(s);
  } catch (const std::out_of_range&) {
    stringThrew = true;
  }
  try {
    onModel(m);
  } catch (const std::out_of_range&) {
    modelThrew = true;
  }
  FUZZ_CHECK(stringThrew == modelThrew,
             std::string(what) + " on " + hex(before) +
                 (stringThrew ? ": String threw" : ": model threw"));
  FUZZ_CHECK(held(s) == m, std::string(what) + " on " + hex(before) + " gave " +
                               hex(held(s)) + " want " + hex(m));
  FUZZ_CHECK(s.size() == m.size() && s.data()[s.size()] == 0, what);
}

int sign(int v) { return (v > 0) - (v < 0); }

void checkSearches(Reader& in, const String& s, const std::u32string& m,
                   const String& needle, const std::u32string& n) {
  const std::u32string p = n.substr(0, n.find(char32_t(0)));  // pointer form
  const size_t pos = in.position(m.size());
  const char32_t c = in.element();
  const std::string where =
      hex(m) + " needle " + hex(n) + " pos " + std::to_string(pos);
#define SEARCH(member)                                                    \
  FUZZ_CHECK(s.member(needle, pos) == m.member(n, pos), #member + where); \
  FUZZ_CHECK(s.member(p.c_str(), pos) == m.member(p.c_str(), pos),        \
             #member "(p)" + where);                                      \
  FUZZ_CHECK(s.member(c, pos) == m.member(c, pos), #member "(c)" + where)
  SEARCH(find);
  SEARCH(rfind);
  SEARCH(find_first_of);
  SEARCH(find_last_of);
  SEARCH(find_first_not_of);
  SEARCH(find_last_not_of);
#undef SEARCH
  // The defaults are those of the standard string.
  FUZZ_CHECK(s.find(needle) == m.find(n) && s.rfind(needle) == m.rfind(n),
             where);
  FUZZ_CHECK(s.find_last_of(c) == m.find_last_of(c), where);
}

void checkComparisons(Reader& in, const String& a, const std::u32string& ma,
                      const String& b, const std::u32string& mb) {
  const std::string where = hex(ma) + " vs " + hex(mb);
  const std::u32string p = mb.substr(0, mb.find(char32_t(0)));
  const int whole = a.compare(b);
  FUZZ_CHECK(whole >= -1 && whole <= 1, where);
  FUZZ_CHECK(whole == sign(ma.compare(mb)), where);
  FUZZ_CHECK(a.compare(p.c_str()) == sign(ma.compare(p.c_str())), where);

  const size_t pos = in.position(ma.size()), len = in.position(ma.size());
  const size_t pos2 = in.position(mb.size()), len2 = in.position(mb.size());
  auto same = [&](auto onString, auto onModel, const char* what) {
    int got = 2, want = 2;
    bool threw = false, modelThrew = false;
    try {
      got = onString();
    } catch (const std::out_of_range&) {
      threw = true;
    }
    try {
      want = sign(onModel());
    } catch (const std::out_of_range&) {
      modelThrew = true;
    }
    FUZZ_CHECK(threw == modelThrew && (threw || got == want),
               std::string(what) + where);
  };
  same([&] { return a.compare(pos, len, b); },
       [&] { return ma.compare(pos, len, mb); }, "compare(pos,n,s) ");
  same([&] { return a.compare(pos, len, b, pos2, len2); },
       [&] { return ma.compare(pos, len, mb, pos2, len2); },
       "compare(pos,n,s,pos2,n2) ");
  same([&] { return a.compare(pos, len, p.c_str()); },
       [&] { return ma.compare(pos, len, p.c_str()); }, "compare(pos,n,p) ");

  FUZZ_CHECK((a == b) == (ma == mb) && (a != b) == (ma != mb), where);
  FUZZ_CHECK((a < b) == (ma < mb) && (a > b) == (ma > mb), where);
  FUZZ_CHECK((a <= b) == (ma <= mb) && (a >= b) == (ma >= mb), where);
  const char32_t* q = p.c_str();
  FUZZ_CHECK((a == q) == (ma == p) && (q == a) == (p == ma), where);
  FUZZ_CHECK((a != q) == (ma != p) && (q != a) == (p != ma), where);
  FUZZ_CHECK((a < q) == (ma < p) && (q < a) == (p < ma), where);
  FUZZ_CHECK((a > q) == (ma > p) && (q > a) == (p > ma), where);
  FUZZ_CHECK((a <= q) == (ma <= p) && (q <= a) == (p <= ma), where);
  FUZZ_CHECK((a >= q) == (ma >= p) && (q >= a) == (p >= ma), where);
}

// All twelve concatenations, and what each leaves of its rvalue operands.
void checkConcatenation(Reader& in, const String& a, const std::u32string& ma,
                        const String& b, const std::u32string& mb) {
  const std::string where = hex(ma) + " + " + hex(mb);
  const std::u32string p = mb.substr(0, mb.find(char32_t(0)));
  const char32_t c = in.element();
  FUZZ_CHECK(held(a + b) == ma + mb, where);
  FUZZ_CHECK(held(p.c_str() + a) == p + ma, where);
  FUZZ_CHECK(held(c + a) == c + ma, where);
  FUZZ_CHECK(held(a + p.c_str()) == ma + p, where);
  FUZZ_CHECK(held(a + c) == ma + c, where);
  {
    String x = a;
    String r = std::move(x) + b;
    FUZZ_CHECK(held(r) == ma + mb && x.empty(), "String&& + " + where);
  }
  {
    String y = b;
    String r = a + std::move(y);
    FUZZ_CHECK(held(r) == ma + mb && y.empty(), "+ String&& " + where);
  }
  {
    // The result comes from whichever operand has room for the other.
    String x = a, y = b;
    x.reserve(a.size() + in.byte() % 8);
    y.reserve(b.size() + in.byte() % 8);
    const size_t roomX = x.capacity() - x.size(),
                 roomY = y.capacity() - y.size();
    const bool intoY = y.size() > roomX && x.size() <= roomY;
    String r = std::move(x) + std::move(y);
    FUZZ_CHECK(held(r) == ma + mb, "&& + && " + where);
    if (intoY)
      FUZZ_CHECK(y.empty() && held(x) == ma, "&& + && into b " + where);
    else
      FUZZ_CHECK(x.empty() && held(y) == mb, "&& + && into a " + where);
  }
  {
    String y = a;
    String r = p.c_str() + std::move(y);
    FUZZ_CHECK(held(r) == p + ma && y.empty(), "p + String&& " + where);
  }
  {
    String y = a;
    String r = c + std::move(y);
    FUZZ_CHECK(held(r) == c + ma && y.empty(), "c + String&& " + where);
  }
  {
    String x = a;
    String r = std::move(x) + p.c_str();
    FUZZ_CHECK(held(r) == ma + p && x.empty(), "String&& + p " + where);
  }
  {
    String x = a;
    String r = std::move(x) + c;
    FUZZ_CHECK(held(r) == ma + c && x.empty(), "String&& + c " + where);
  }
}

// One step of the script on A (model a), with B (model b) as a second
// operand.
void step(Reader& in, String& A, std::u32string& a, String& B,
          std::u32string& b) {
  const uint8_t op = in.byte() % 48;
  const bool canGrow = a.size() < kMaxSize;
  if (!canGrow && op < 36) {
    both(
        A, a, [](String& s) { s.erase(s.size() / 2); },
        [](std::u32string& m) { m.erase(m.size() / 2); }, "shrink");
    return;
  }
  const size_t pos = in.position(a.size()), n = in.position(a.size());
  const size_t pos2 = in.position(b.size()), n2 = in.position(b.size());
  const size_t count = in.byte() % 8;
  const char32_t c = in.element(), c2 = in.element();
  const std::u32string list = in.elements(4);
  const std::u32string p = list.substr(0, list.find(char32_t(0)));
  const char32_t* ptr = p.c_str();
  // Valid places for iterator forms.
  const size_t at = a.empty() ? 0 : pos % (a.size() + 1);
  const size_t at2 = a.empty() ? 0 : at + n % (a.size() - at + 1);
  const size_t from = b.empty() ? 0 : pos2 % (b.size() + 1);
  const size_t to = b.empty() ? 0 : from + n2 % (b.size() - from + 1);

#define EDIT(what, expr_s, expr_m)                                          \
  both(                                                                     \
      A, a, [&](String& s) { expr_s; }, [&](std::u32string& m) { expr_m; }, \
      what)

  switch (op) {
    case 0:
      EDIT("append(s)", s.append(B), m.append(b));
      break;
    case 1:
      EDIT("append(s,pos,n)", s.append(B, pos2, n2), m.append(b, pos2, n2));
      break;
    case 2:
      EDIT("append(p)", s.append(ptr), m.append(ptr));
      break;
    case 3:
      EDIT("append(n,c)", s.append(count, c), m.append(count, c));
      break;
    case 4:
      EDIT("append(first,last)", s.append(B.cbegin() + from, B.cbegin() + to),
           m.append(b.cbegin() + from, b.cbegin() + to));
      break;
    case 5:
      EDIT("append(list)", s.append({c, c2}), m.append({c, c2}));
      break;
    case 6:
      EDIT("+=(s)", s += B, m += b);
      break;
    case 7:
      EDIT("+=(p)", s += ptr, m += ptr);
      break;
    case 8:
      EDIT("+=(c)", s += c, m += c);
      break;
    case 9:
      EDIT("+=(list)", (s += {c, c2, c}), (m += {c, c2, c}));
      break;
    case 10:
      EDIT("push_back", s.push_back(c), m.push_back(c));
      break;
    case 11:
      if (!a.empty()) EDIT("pop_back", s.pop_back(), m.pop_back());
      break;
    case 12:
      EDIT("insert(pos,s)", s.insert(pos, B), m.insert(pos, b));
      break;
    case 13:
      EDIT("insert(pos,s,pos2,n)", s.insert(pos, B, pos2, n2),
           m.insert(pos, b, pos2, n2));
      break;
    case 14:
      EDIT("insert(pos,p)", s.insert(pos, ptr), m.insert(pos, ptr));
      break;
    case 15:
      EDIT("insert(pos,n,c)", s.insert(pos, count, c), m.insert(pos, count, c));
      break;
    case 16: {
      size_t gotAt = 0, wantAt = 0;
      EDIT("insert(it,c)", gotAt = s.insert(s.cbegin() + at, c) - s.begin(),
           wantAt = m.insert(m.cbegin() + at, c) - m.begin());
      FUZZ_CHECK(gotAt == wantAt, "insert(it,c) result");
      break;
    }
    case 17: {
      size_t gotAt = 0, wantAt = 0;
      EDIT("insert(it,n,c)",
           gotAt = s.insert(s.cbegin() + at, count, c) - s.begin(),
           wantAt = m.insert(m.cbegin() + at, count, c) - m.begin());
      FUZZ_CHECK(gotAt == wantAt, "insert(it,n,c) result");
      break;
    }
    case 18: {
      size_t gotAt = 0, wantAt = 0;
      EDIT("insert(it,first,last)",
           gotAt =
               s.insert(s.cbegin() + at, B.cbegin() + from, B.cbegin() + to) -
               s.begin(),
           wantAt =
               m.insert(m.cbegin() + at, b.cbegin() + from, b.cbegin() + to) -
               m.begin());
      FUZZ_CHECK(gotAt == wantAt, "insert(it,first,last) result");
      break;
    }
    case 19: {
      size_t gotAt = 0, wantAt = 0;
      EDIT("insert(it,list)",
           gotAt = s.insert(s.cbegin() + at, {c, c2}) - s.begin(),
           wantAt = m.insert(m.cbegin() + at, {c, c2}) - m.begin());
      FUZZ_CHECK(gotAt == wantAt, "insert(it,list) result");
      break;
    }
    case 20:
      EDIT("erase(pos)", s.erase(pos), m.erase(pos));
      break;
    case 21:
      EDIT("erase(pos,n)", s.erase(pos, n), m.erase(pos, n));
      break;
    case 22: {
      // At end() nothing is removed and end() comes back.
      size_t gotAt = 0, wantAt = at;
      EDIT("erase(it)", gotAt = s.erase(s.cbegin() + at) - s.begin(),
           if (at < m.size()) m.erase(m.begin() + at));
      FUZZ_CHECK(gotAt == wantAt, "erase(it) result");
      break;
    }
    case 23: {
      size_t gotAt = 0;
      EDIT("erase(first,last)",
           gotAt = s.erase(s.cbegin() + at, s.cbegin() + at2) - s.begin(),
           m.erase(m.cbegin() + at, m.cbegin() + at2));
      FUZZ_CHECK(gotAt == at, "erase(first,last) result");
      break;
    }
    case 24:
      EDIT("replace(pos,n,s)", s.replace(pos, n, B), m.replace(pos, n, b));
      break;
    case 25:
      EDIT("replace(pos,n,s,pos2,n2)", s.replace(pos, n, B, pos2, n2),
           m.replace(pos, n, b, pos2, n2));
      break;
    case 26:
      EDIT("replace(pos,n,p)", s.replace(pos, n, ptr), m.replace(pos, n, ptr));
      break;
    case 27:
      EDIT("replace(pos,n,n2,c)", s.replace(pos, n, count, c),
           m.replace(pos, n, count, c));
      break;
    case 28:
      EDIT("replace(it,it,s)", s.replace(s.cbegin() + at, s.cbegin() + at2, B),
           m.replace(m.cbegin() + at, m.cbegin() + at2, b));
      break;
    case 29:
      EDIT("replace(it,it,p)",
           s.replace(s.cbegin() + at, s.cbegin() + at2, ptr),
           m.replace(m.cbegin() + at, m.cbegin() + at2, ptr));
      break;
    case 30:
      EDIT("replace(it,it,n2,c)",
           s.replace(s.cbegin() + at, s.cbegin() + at2, count, c),
           m.replace(m.cbegin() + at, m.cbegin() + at2, count, c));
      break;
    case 31:
      EDIT("replace(it,it,cit,cit)",
           s.replace(s.cbegin() + at, s.cbegin() + at2, B.cbegin() + from,
                     B.cbegin() + to),
           m.replace(m.cbegin() + at, m.cbegin() + at2, b.cbegin() + from,
                     b.cbegin() + to));
      break;
    case 32:
      EDIT("replace(it,it,it,it)",
           s.replace(s.cbegin() + at, s.cbegin() + at2, B.begin() + from,
                     B.begin() + to),
           m.replace(m.cbegin() + at, m.cbegin() + at2, b.begin() + from,
                     b.begin() + to));
      break;
    case 33:
      EDIT("replace(it,it,list)",
           s.replace(s.cbegin() + at, s.cbegin() + at2, {c, c2}),
           m.replace(m.cbegin() + at, m.cbegin() + at2, {c, c2}));
      break;
    case 34: {
      // The object itself as the argument acts as a copy of it.
      const std::u32string self = a;
      switch (in.byte() % 3) {
        case 0:
          EDIT("append(self)", s.append(s), m.append(self));
          break;
        case 1:
          EDIT("insert(pos,self)", s.insert(pos, s), m.insert(pos, self));
          break;
        default:
          EDIT("replace(pos,n,self)", s.replace(pos, n, s),
               m.replace(pos, n, self));
      }
      break;
    }
    case 35:
      switch (in.byte() % 6) {
        case 0:
          EDIT("resize(n)", s.resize(count), m.resize(count));
          break;
        case 1:
          EDIT("resize(n,c)", s.resize(a.size() + count, c),
               m.resize(a.size() + count, c));
          break;
        case 2:
          EDIT("assign(n,c)", s.assign(count, c), m.assign(count, c));
          break;
        case 3:
          EDIT("assign(s,pos,n)", s.assign(B, pos2, n2), m.assign(b, pos2, n2));
          break;
        case 4:
          EDIT("assign(p)", s.assign(ptr), m.assign(ptr));
          break;
        default:
          EDIT("=(c)", s = c, m = c);
      }
      break;
    case 36: {
      const size_t sub = in.position(a.size()), len = in.position(a.size());
      bool threw = false;
      try {
        const String piece = A.substr(sub, len);
        FUZZ_CHECK(sub <= a.size() && held(piece) == a.substr(sub, len),
                   "substr " + hex(a));
        const String built(A, sub, len);
        FUZZ_CHECK(built == piece, "String(s,pos,n) " + hex(a));
      } catch (const std::out_of_range&) {
        threw = true;
      }
      FUZZ_CHECK(threw == (sub > a.size()), "substr throw " + hex(a));
      break;
    }
    case 37:
      checkSearches(in, A, a, B, b);
      break;
    case 38: {
      // A needle taken out of the text itself, so that matches occur.
      const size_t sub = in.position(a.size());
      const std::u32string n3 = sub <= a.size() ? a.substr(sub, count) : b;
      checkSearches(in, A, a, String(n3), n3);
      break;
    }
    case 39:
      checkComparisons(in, A, a, B, b);
      break;
    case 40:
      checkComparisons(in, B, b, A, a);
      break;
    case 41:
      if (a.size() + b.size() < kMaxSize) checkConcatenation(in, A, a, B, b);
      break;
    case 42: {
      bool threw = false;
      try {
        FUZZ_CHECK(A.at(pos) == a.at(pos), "at " + hex(a));
      } catch (const std::out_of_range&) {
        threw = true;
      }
      FUZZ_CHECK(threw == (pos >= a.size()), "at throw " + hex(a));
      if (!a.empty())
        FUZZ_CHECK(A.front() == a.front() && A.back() == a.back() &&
                       A[a.size() - 1] == a.back(),
                   "front/back " + hex(a));
      break;
    }
    case 43:
      A.swap(B);
      a.swap(b);
      break;
    case 44: {
      // Bad code point members against their definition.
      bool anyBad = false;
      for (char32_t e : a) anyBad = anyBad || isBad(e);
      FUZZ_CHECK(A.hasBadCodePoints() == anyBad, hex(a));
      std::u32string want;
      switch (in.byte() % 3) {
        case 0:
          for (char32_t e : a)
            if (!isBad(e)) want.push_back(e);
          EDIT("stripBadCodePoints", s.stripBadCodePoints(), m = want);
          break;
        case 1:
          for (char32_t e : a)
            if (e != 0xFFFD) want.push_back(e);
          EDIT("stripReplacementCodePoints", s.stripReplacementCodePoints(),
               m = want);
          break;
        default:
          for (char32_t e : a) want.push_back(isBad(e) ? char32_t(0xFFFD) : e);
          EDIT("replaceBadCodePoints", s.replaceBadCodePoints(), m = want);
      }
      break;
    }
    case 45:
      EDIT("clear", s.clear(), m.clear());
      break;
    case 46: {
      A.reserve(a.size() + count);
      FUZZ_CHECK(A.capacity() >= a.size() + count && held(A) == a, "reserve");
      A.shrink_to_fit();
      FUZZ_CHECK(held(A) == a && A.capacity() >= a.size(), "shrink_to_fit");
      break;
    }
    default: {
      // Copies and moves carry the content, and a moved-from object is
      // empty and usable.
      String copy = A;
      FUZZ_CHECK(copy == A, "copy");
      String moved = std::move(copy);
      FUZZ_CHECK(moved == A && copy.empty(), "move");
      copy.push_back(c);
      FUZZ_CHECK(copy.size() == 1 && copy[0] == c, "moved-from reuse");
      B = std::move(moved);
      b = a;
      FUZZ_CHECK(moved.empty() && held(B) == b, "move assignment");
      break;
    }
  }
#undef EDIT
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Reader in(data, size);
  std::u32string a = in.elements(8), b = in.elements(8);
  String A(a), B(b);
  while (!in.done()) {
    step(in, A, a, B, b);
    FUZZ_CHECK(held(A) == a && held(B) == b,
               "state " + hex(held(A)) + " want " + hex(a));
  }
  return 0;
}
