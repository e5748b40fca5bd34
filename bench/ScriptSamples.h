// Texts of scripts that the corpus lacks, of one script with no Latin in it,
// and of Lithuanian with the marks that its casing rows look at, for the
// benchmarks: a paragraph of each, repeated to some 64 KB.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zelvo_bench {

// The English text that stands behind the Deseret sample, letter for letter.
inline std::string const& deseretSource() {
  static std::string const text =
      "All human beings are born free and equal in dignity and rights. They "
      "are endowed with reason and conscience and should act towards one "
      "another in a spirit of brotherhood. Everyone is entitled to All the "
      "Rights and Freedoms set forth in This Declaration. ";
  return text;
}

// Deseret, a script with case above U+FFFF: each Latin letter of the English
// text becomes a Deseret letter of the same case.
inline std::string deseretParagraph() {
  std::string out;
  for (char letter : deseretSource()) {
    char32_t c = static_cast<unsigned char>(letter);
    if (letter >= 'A' && letter <= 'Z') c = 0x10400 + (letter - 'A');
    if (letter >= 'a' && letter <= 'z') c = 0x10428 + (letter - 'a');
    if (c < 0x80) {
      out.push_back(static_cast<char>(c));
    } else {
      out.push_back(static_cast<char>(0xF0 | (c >> 18)));
      out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }
  return out;
}

// (name, UTF-8 text) of every sample.
inline std::vector<std::pair<std::string, std::string>> scriptSamples() {
  std::vector<std::pair<std::string, std::string>> paragraphs = {
      {"x-armenian",
       "Բոլոր մարդիկ ծնվում են ազատ ու հավասար իրենց արժանապատվությամբ ու "
       "իրավունքներով։ Նրանք ունեն բանականություն ու խիղճ և միմյանց պետք է "
       "եղբայրաբար վերաբերվեն։ ՄԱՐԴՈՒ ԻՐԱՎՈՒՆՔՆԵՐԻ ՀՌՉԱԿԱԳԻՐ։ Հոդված 1. "
       "Յուրաքանչյուր ոք ունի կյանքի, ազատության և անձնական անձեռնմխելիության "
       "իրավունք։ "},
      {"x-georgian",
       "ყველა ადამიანი იბადება თავისუფალი და თანასწორი თავისი ღირსებითა და "
       "უფლებებით. მათ მინიჭებული აქვთ გონება და სინდისი და ერთმანეთის "
       "მიმართ უნდა იქცეოდნენ ძმობის სულისკვეთებით. ႠႦႧ ႨႩ ႫႬ ⴀⴆⴇ ⴈⴉ. "},
      {"x-cherokee",
       "ᏂᎦᏓ ᎠᏂᏴᏫ ᏂᎨᎫᏓᎸᎾ ᎠᎴ ᎤᏂᏠᏱ ᎤᎾᏕᎿ ᏚᏳᎧᏛ ᎨᏒᎢ. ᎨᏥᏁᎳ ᎤᎾᏓᏅᏖᏗ ᎠᎴ "
       "ᎤᏃᏟᏍᏗ, ᎠᎴ ᏌᏊ ᎨᏒ ᏧᏂᎸᏫᏍᏓᏁᏗ ᎠᎾᏟᏅᎢ. ᏣᎳᎩ ᎦᏬᏂᎯᏍᏗ ᏗᎪᏪᎵ. "},
      {"x-cyrillic",
       "ВСЕОБЩАЯ ДЕКЛАРАЦИЯ ПРАВ ЧЕЛОВЕКА. Статья 1. Все люди рождаются "
       "свободными и равными в своём достоинстве и правах. Они наделены "
       "разумом и совестью и должны поступать в отношении друг друга в духе "
       "братства. Статья 2. Каждый человек должен обладать всеми правами и "
       "всеми свободами, провозглашёнными настоящей Декларацией. "},
      {"x-greek-polytonic",
       "Μῆνιν ἄειδε θεὰ Πηληϊάδεω Ἀχιλῆος οὐλομένην, ἣ μυρί᾽ Ἀχαιοῖς ἄλγε᾽ "
       "ἔθηκε, πολλὰς δ᾽ ἰφθίμους ψυχὰς Ἄϊδι προΐαψεν ἡρώων, αὐτοὺς δὲ "
       "ἑλώρια τεῦχε κύνεσσιν οἰωνοῖσί τε πᾶσι· Διὸς δ᾽ ἐτελείετο βουλή, ἐξ "
       "οὗ δὴ τὰ πρῶτα διαστήτην ἐρίσαντε Ἀτρεΐδης τε ἄναξ ἀνδρῶν καὶ δῖος "
       "Ἀχιλλεύς. ᾠδὴ τῇ Μούσῃ ᾄδεται. ΟΜΗΡΟΥ ΙΛΙΑΔΟΣ ΡΑΨΩΔΙΑ Α. ΛΟΙΜΟΣ. "
       "ΜΗΝΙΣ. ΤΟΥΣ ΘΕΟΥΣ ΚΑΙ ΤΟΥΣ ΗΡΩΑΣ ΑΕΙΔΟΜΕΝ. "},
      {"x-deseret", deseretParagraph()},
      {"x-hebrew",
       "כל בני האדם נולדו בני חורין ושווים בערכם ובזכויותיהם. כולם חוננו "
       "בתבונה ובמצפון, לפיכך חובה עליהם לנהוג איש ברעהו ברוח של אחוה. "
       "בְּרֵאשִׁית בָּרָא אֱלֹהִים אֵת הַשָּׁמַיִם וְאֵת הָאָרֶץ. "},
      {"x-arabic",
       "يولد جميع الناس أحرارًا متساوين في الكرامة والحقوق. وقد وهبوا عقلاً "
       "وضميرًا وعليهم أن يعامل بعضهم بعضًا بروح الإخاء. لكل إنسان حق "
       "التمتع بكافة الحقوق والحريات الواردة في هذا الإعلان. "},
      {"x-cjk",
       "人人生而自由，在尊严和权利上一律平等。他们赋有理性和良心，并应以兄弟"
       "关系的精神相对待。すべての人間は、生まれながらにして自由であり、かつ、"
       "尊厳と権利とについて平等である。모든 인간은 태어날 때부터 자유로우며 "
       "그 존엄과 권리에 있어 동등하다。"},
      {"x-lithuanian-accented",
       "Visi žmonės gimsta laisvi ir lygūs savo orumu ir teisėmis. Jiems "
       "suteiktas protas ir sąžinė, ir jie turi elgtis vienas kito atžvilgiu "
       "kaip broliai. VISUOTINĖ ŽMOGAUS TEISIŲ DEKLARACIJA. ĮSTATYMAS. "
       "Kaimè Ìlgas Ĩ Íeva: I\u0301r J\u0303uodas Į\u0301vykis, "
       "I\u0300\u0323 J\u0301\u0301 Į\u0323\u0303. "},
      {"x-emoji",
       "\U0001F600\U0001F603\U0001F604 \U0001F44D\U0001F3FD "
       "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466 "
       "\u2764\uFE0F \U0001F389\U0001F38A \U0001F1F9\U0001F1F7 "
       "\U0001F1F1\U0001F1F9 \u2728\U0001F525\U0001F4AF "
       "\U0001F64F\U0001F3FB \U0001F422\U0001F30A \u2615\uFE0F "
       "\U0001F3F3\uFE0F\u200D\U0001F308 "
       "\U0001F469\U0001F3FE\u200D\U0001F4BB \U0001F680\U0001F30D "
       "\u2B50\uFE0F\u2B50\uFE0F\u2B50\uFE0F \U0001F91D "
       "\U0001F602\U0001F602 \U0001F973 "},
  };
  std::vector<std::pair<std::string, std::string>> samples;
  for (auto const& paragraph : paragraphs) {
    std::string text;
    while (text.size() < 64 * 1024) text += paragraph.second;
    samples.push_back({paragraph.first, text});
  }
  return samples;
}

}  // namespace zelvo_bench
