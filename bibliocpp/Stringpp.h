#pragma once
// Conversions between texts and numbers, and tests on texts and characters.
//
// Nothing here throws on bad input or reports an error: a malformed text gives the number that the
// stated rule computes, so a caller who cares tests it first (checkint before Stoi). Integer
// arithmetic wraps around at the width of the result, in two's complement. Letters and digits are
// those of ASCII, whatever the locale; chars count as signed.

#include <string>
#include <string_view>

using String = std::string;

// --- Text to number ---

// A new NUL-terminated copy of s, which the caller releases with delete[].
char* Stoa(const String& s);

// Decimal with an optional leading "-"; an empty text gives 0. Deliberately unchecked: any other
// character counts as its code minus that of "0", so that "1a" gives 1 * 10 + 49.
int Stoi(String s);
long Stol(String s);
long long Stoll(String s);

// Decimal with `sep` between units and fraction: leading blanks, an optional "-", digits; what follows
// the number is ignored. No number gives 0.0, a lone "-" gives -0.0. A second separator deliberately
// starts the fraction anew without dropping digits: "1.2.3" gives 12.3.
double Stod(String s, char sep);

// Hexadecimal, either case. Any other character counts as a digit 0: "1G" gives 16.
unsigned long Stouhex(const String& s);

// The same digits, negative when the first is 8 or more: "7F" gives 127, "80" gives -128. Right for up
// to 7 digits. What is subtracted, 2 to the power 4 * length, is deliberately the result of a 32-bit
// shift: 8 digits lose 1, "FFFFFFFF" giving 4294967294, 9 digits lose 16, and so on.
long Stoshex(const String& s);

// Binary; an empty text gives 0. Unchecked as in Stoi.
unsigned long Stoubin(const String& s);

// Binary in two's complement as wide as the text: "0101" gives 5, "1011" gives -5, "1" gives -1. Any
// first character but "0" counts as the sign; the others are unchecked.
long Stosbin(const String& s);

// --- Number to text ---

// The one-character text c.
String ctoS(char c);
// In decimal.
String unslong2S(unsigned long v);
// In base 8 with the letters A to H for 0 to 7: 0 gives "A", 8 gives "BA".
String unslongbyS(unsigned long v);
// The low 8 bits of v, most significant first: 5 gives "00000101".
String bin8toS(int v);
// One hexadecimal digit, lower case, for the remainder of v divided by 16. The remainder of a negative
// v is negative and deliberately counts on below "0": -1 gives "/".
String hex1toS(int v);

// --- Tests: 1 or 0 ---

// One digit or more.
int checkuint(const String& s);
// The same after an optional "-". No "+".
int checkint(const String& s);
// Always 1: not written yet. Says so, "checkdouble() a ecrire", on the standard error stream.
int checkdouble(const String& s);
// Hexadecimal digits only, in either case; an empty text passes.
int checkhex(const String& s);
// Binary digits only; an empty text passes.
int checkbin(const String& s);
// Hexadecimal digits, none allowed, before a final lower-case "h".
int checkhexintel(const String& s);
// The first character is a digit.
int beginbynumber(const String& s);
// A letter, a digit, "_" or "@".
int est_lc(char c);
// A letter as an ISO 8859-1 code: an ASCII letter, 181 (micro), 192 to 214, 217 to 246, 249 to 253 or
// 255. That 216, 248 and 254 are missing is deliberate.
int check_ISO_8859_1_alphabetical_letter(char c);
// A name: letters, digits and "_", beginning with a letter and not ending with "_".
int checkvarname(const String& s);
// The same, but the first character may also be "_"; a lone "_" is no name.
int checkvarname_with_pre_underscore(const String& s);

// --- Splitting ---

// Takes the first record off `remainder`: the text up to the separator, which is dropped, or all of it
// when there is none. The view is into the caller's text.
std::string_view next_record(std::string_view& remainder, char separator);
