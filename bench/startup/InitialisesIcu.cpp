// The peer of the start-up benchmark: a program that makes ICU ready for
// everything the library offers at load (the four normalizers, the case
// mappings and the two code page converters) and uses each once.
#include <unicode/ucnv.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

int main() {
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* normalizers[] = {
      unorm2_getNFCInstance(&status), unorm2_getNFDInstance(&status),
      unorm2_getNFKCInstance(&status), unorm2_getNFKDInstance(&status)};
  const UChar text[] = {0x0041, 0x030A, 0x00DF, 0x03A3, 0};
  UChar out[16];
  for (const UNormalizer2* normalizer : normalizers)
    unorm2_normalize(normalizer, text, -1, out, 16, &status);
  u_strToUpper(out, 16, text, -1, "", &status);
  u_strToLower(out, 16, text, -1, "tr", &status);
  u_foldCase(0x0041, U_FOLD_CASE_DEFAULT);
  const char* const converters[] = {"windows-1252", "windows-874"};
  for (const char* name : converters) {
    UConverter* converter = ucnv_open(name, &status);
    char bytes[16];
    ucnv_fromUChars(converter, bytes, 16, text, -1, &status);
    ucnv_close(converter);
  }
  return U_SUCCESS(status) ? 0 : 1;
}
