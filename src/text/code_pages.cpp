#include "code_pages.h"

#include <algorithm>

namespace ztcad {

namespace {

// Names and characters are those of Qt 5.15 with ICU, which the tests compare. A byte that a page leaves
// undefined is U+FFFD, or the control character of its number.
constexpr CodePage pages[] = {
    // ISO-8859-1
    {" iso88591 819 88591 cp819 csisolatin1 ibm819 iso885911987 isoir100 l1 latin1 ", 0x100, u""},
    // ISO-8859-2
    {" iso88592 88592 912 cp912 csisolatin2 ibm912 ibm912p1001995 iso885921987 isoir101 l2 latin2 "
     "windows28592 ",
     0xa1,
     u"Ą˘Ł¤ĽŚ§¨ŠŞŤŹ\u00adŽŻ°ą˛ł´ľśˇ¸šşťź˝žżŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎĐŃŇÓÔŐÖ×ŘŮÚŰÜÝŢßŕáâăäĺćçčéęëěíîďđńňóôőö÷řůúű"
     u"üýţ˙"},
    // ISO-8859-3
    {" iso88593 88593 913 cp913 csisolatin3 ibm913 ibm913p1002000 iso885931988 isoir109 l3 latin3 "
     "windows28593 ",
     0xa1,
     u"Ħ˘£¤\ufffdĤ§¨İŞĞĴ\u00ad\ufffdŻ°ħ²³´µĥ·¸ışğĵ½\ufffdżÀÁÂ\ufffdÄĊĈÇÈÉÊËÌÍÎÏ\ufffdÑÒÓÔĠÖ×ĜÙÚÛÜŬŜßàáâ"
     u"\ufffdäċĉçèéêëìíîï\ufffdñòóôġö÷ĝùúûüŭŝ˙"},
    // ISO-8859-4
    {" iso88594 88594 914 cp914 csisolatin4 ibm914 ibm914p1001995 iso885941988 isoir110 l4 latin4 "
     "windows28594 ",
     0xa1,
     u"ĄĸŖ¤ĨĻ§¨ŠĒĢŦ\u00adŽ¯°ą˛ŗ´ĩļˇ¸šēģŧŊžŋĀÁÂÃÄÅÆĮČÉĘËĖÍÎĪĐŅŌĶÔÕÖ×ØŲÚÛÜŨŪßāáâãäåæįčéęëėíîīđņōķôõö÷øųúû"
     u"üũū˙"},
    // ISO-8859-5
    {" iso88595 88595 915 cp915 csisolatincyrillic cyrillic ibm915 ibm915p1001995 iso885951988 "
     "isoir144 windows28595 ",
     0xa1,
     u"ЁЂЃЄЅІЇЈЉЊЋЌ\u00adЎЏАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя№ёђѓєѕіїјљњћ"
     u"ќ§ўџ"},
    // ISO-8859-6
    {" iso88596 1089 88596 arabic asmo708 cp1089 csisolatinarabic ecma114 ibm1089 ibm1089p1001995 "
     "iso885961987 iso88596e iso88596i isoir127 windows28596 xiso88596s ",
     0xa1,
     u"\ufffd\ufffd\ufffd¤\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd،\u00ad\ufffd\ufffd\ufffd\ufffd"
     u"\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\u061b\ufffd\ufffd\ufffd\u061f\ufffd\u0621"
     u"\u0622\u0623\u0624\u0625\u0626\u0627\u0628\u0629\u062a\u062b\u062c\u062d\u062e\u062f\u0630\u0631"
     u"\u0632\u0633\u0634\u0635\u0636\u0637\u0638\u0639\u063a\ufffd\ufffd\ufffd\ufffd\ufffd\u0640\u0641"
     u"\u0642\u0643\u0644\u0645\u0646\u0647\u0648\u0649\u064a\u064b\u064c\u064d\u064e\u064f\u0650\u0651"
     u"\u0652"},
    // ISO-8859-7
    {" iso88597 88597 csisolatingreek ecma118 elot928 greek greek8 ibm9005 ibm9005x1102007 "
     "iso885971987 isoir126 suneugreek windows28597 ",
     0xa1,
     u"‘’£€₯¦§¨©ͺ«¬\u00ad\ufffd―°±²³΄΅Ά·ΈΉΊ»Ό½ΎΏΐΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡ\ufffdΣΤΥΦΧΨΩΪΫάέήίΰαβγδεζηθικλμνξοπρ"
     u"ςστυφχψωϊϋόύώ"},
    // ISO-8859-8
    {" iso88598 88598 csisolatinhebrew hebrew hebrew8 ibm5012 ibm5012p1001999 iso885981988 iso88598e "
     "iso88598i isoir138 windows28598 ",
     0xa1,
     u"\ufffd¢£¤¥¦§¨©×«¬\u00ad®¯°±²³´µ¶·¸¹÷»¼½¾\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd"
     u"\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd"
     u"\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd‗\u05d0\u05d1\u05d2\u05d3\u05d4\u05d5\u05d6\u05d7"
     u"\u05d8\u05d9\u05da\u05db\u05dc\u05dd\u05de\u05df\u05e0\u05e1\u05e2\u05e3\u05e4\u05e5\u05e6\u05e7"
     u"\u05e8\u05e9\u05ea\ufffd\ufffd\u200e\u200f"},
    // ISO-8859-9
    {" iso88599 88599 920 cp920 csisolatin5 ecma128 ibm920 ibm920p1001995 iso885991989 isoir148 l5 "
     "latin5 turkish turkish8 windows28599 ",
     0xd0, u"ĞÑÒÓÔÕÖ×ØÙÚÛÜİŞßàáâãäåæçèéêëìíîïğñòóôõö÷øùúûüışÿ"},
    // ISO-8859-10
    {" iso885910 csisolatin6 iso8859101992 iso8859101998 isoir157 l6 latin6 ", 0xa1,
     u"ĄĒĢĪĨĶ§ĻĐŠŦŽ\u00adŪŊ°ąēģīĩķ·ļđšŧž―ūŋĀÁÂÃÄÅÆĮČÉĘËĖÍÎÏÐŅŌÓÔÕÖŨØŲÚÛÜÝÞßāáâãäåæįčéęëėíîïðņōóôõöũøųúû"
     u"üýþĸ"},
    // ISO-8859-13
    {" iso885913 885913 921 cp921 ibm921 ibm921p1001995 windows28603 xibm921 ", 0xa1,
     u"”¢£¤„¦§Ø©Ŗ«¬\u00ad®Æ°±²³“µ¶·ø¹ŗ»¼½¾æĄĮĀĆÄÅĘĒČÉŹĖĢĶĪĻŠŃŅÓŌÕÖ×ŲŁŚŪÜŻŽßąįāćäåęēčéźėģķīļšńņóōõö÷ųłśū"
     u"üżž’"},
    // ISO-8859-14
    {" iso885914 iso8859141998 isoceltic isoir199 l8 latin8 ", 0xa1,
     u"Ḃḃ£ĊċḊ§Ẁ©ẂḋỲ\u00ad®ŸḞḟĠġṀṁ¶ṖẁṗẃṠỳẄẅṡÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏŴÑÒÓÔÕÖṪØÙÚÛÜÝŶßàáâãäåæçèéêëìíîïŵñòóôõöṫøùúû"
     u"üýŷÿ"},
    // ISO-8859-15
    {" iso885915 885915 923 cp923 csisolatin0 csisolatin9 ibm923 ibm923p1001998 iso885915fdis l9 "
     "latin0 latin9 windows28605 ",
     0xa4,
     u"€¥Š§š©ª«¬\u00ad®¯°±²³Žµ¶·ž¹º»ŒœŸ¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõö÷øùúûüýþ"
     u"ÿ"},
    // ISO-8859-16
    {" iso885916 ", 0xa1,
     u"ĄąŁ€„Š§š©Ș«Ź\u00adźŻ°±ČłŽ”¶·žčș»ŒœŸżÀÁÂĂÄĆÆÇÈÉÊËÌÍÎÏĐŃÒÓÔŐÖŚŰÙÚÛÜĘȚßàáâăäćæçèéêëìíîïđńòóôőöśűùúû"
     u"üęțÿ"},
    // KOI8-R
    {" koi8r cp878 cskoi8r ibm878 ibm878p1001996 koi8 windows20866 ", 0x80,
     u"─│┌┐└┘├┤┬┴┼▀▄█▌▐░▒▓⌠■∙√≈≤≥\u00a0⌡°²·÷═║╒ё╓╔╕╖╗╘╙╚╛╜╝╞╟╠╡Ё╢╣╤╥╦╧╨╩╪╫╬©юабцдефгхийклмнопярстужвьыз"
     u"шэщчъЮАБЦДЕФГХИЙКЛМНОПЯРСТУЖВЬЫЗШЭЩЧЪ"},
    // KOI8-U
    {" koi8u ibm1168 ibm1168p1002002 windows21866 ", 0x80,
     u"─│┌┐└┘├┤┬┴┼▀▄█▌▐░▒▓⌠■∙√≈≤≥\u00a0⌡°²·÷═║╒ёє╔ії╗╘╙╚╛ґ╝╞╟╠╡ЁЄ╣ІЇ╦╧╨╩╪Ґ╬©юабцдефгхийклмнопярстужвьыз"
     u"шэщчъЮАБЦДЕФГХИЙКЛМНОПЯРСТУЖВЬЫЗШЭЩЧЪ"},
    // windows-1250
    {" windows1250 cp1250 ibm5346 ibm5346p1001998 ", 0x80,
     u"€\u0081‚\u0083„…†‡\u0088‰Š‹ŚŤŽŹ\u0090‘’“”•–—\u0098™š›śťžź\u00a0ˇ˘Ł¤Ą¦§¨©Ş«¬\u00ad®Ż°±˛ł´µ¶·¸ąş»Ľ"
     u"˝ľżŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎĐŃŇÓÔŐÖ×ŘŮÚŰÜÝŢßŕáâăäĺćçčéęëěíîďđńňóôőö÷řůúűüýţ˙"},
    // windows-1252
    {" windows1252 cp1252 ibm5348 ibm5348p1001997 ", 0x80,
     u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f\u0090‘’“”•–—˜™š›œ\u009džŸ\u00a0¡¢£¤¥¦§¨©ª«¬\u00ad®¯°±²³´µ¶·¸¹º»¼"
     u"½¾¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõö÷øùúûüýþÿ"},
    // windows-1253
    {" windows1253 cp1253 ibm5349 ibm5349p1001998 ", 0x80,
     u"€\u0081‚ƒ„…†‡\u0088‰\u008a‹\u008c\u008d\u008e\u008f\u0090‘’“”•–—\u0098™\u009a›\u009c\u009d\u009e"
     u"\u009f\u00a0΅Ά£¤¥¦§¨©ª«¬\u00ad®―°±²³΄µ¶·ΈΉΊ»Ό½ΎΏΐΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡ\ufffdΣΤΥΦΧΨΩΪΫάέήίΰαβγδεζηθικ"
     u"λμνξοπρςστυφχψωϊϋόύώ"},
    // windows-1254
    {" windows1254 cp1254 ibm5350 ibm5350p1001998 ", 0x80,
     u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008d\u008e\u008f\u0090‘’“”•–—˜™š›œ\u009d\u009eŸ\u00a0¡¢£¤¥¦§¨©ª«¬\u00ad®¯°±²"
     u"³´µ¶·¸¹º»¼½¾¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏĞÑÒÓÔÕÖ×ØÙÚÛÜİŞßàáâãäåæçèéêëìíîïğñòóôõö÷øùúûüışÿ"},
    // windows-1255
    {" windows1255 cp1255 ibm9447 ibm9447p1002002 ", 0x80,
     u"€\u0081‚ƒ„…†‡ˆ‰\u008a‹\u008c\u008d\u008e\u008f\u0090‘’“”•–—˜™\u009a›\u009c\u009d\u009e\u009f"
     u"\u00a0¡¢£₪¥¦§¨©×«¬\u00ad®¯°±²³´µ¶·¸¹÷»¼½¾¿\u05b0\u05b1\u05b2\u05b3\u05b4\u05b5\u05b6\u05b7\u05b8"
     u"\u05b9\ufffd\u05bb\u05bc\u05bd\u05be\u05bf\u05c0\u05c1\u05c2\u05c3\u05f0\u05f1\u05f2\u05f3\u05f4"
     u"\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd\u05d0\u05d1\u05d2\u05d3\u05d4\u05d5\u05d6\u05d7\u05d8"
     u"\u05d9\u05da\u05db\u05dc\u05dd\u05de\u05df\u05e0\u05e1\u05e2\u05e3\u05e4\u05e5\u05e6\u05e7\u05e8"
     u"\u05e9\u05ea\ufffd\ufffd\u200e\u200f"},
    // windows-1256
    {" windows1256 cp1256 ibm9448 ibm9448x1002005 xwindows1256s ", 0x80,
     u"€\u067e‚ƒ„…†‡ˆ‰\u0679‹Œ\u0686\u0698\u0688\u06af‘’“”•–—\u06a9™\u0691›œ\u200c\u200d\u06ba\u00a0،¢£"
     u"¤¥¦§¨©\u06be«¬\u00ad®¯°±²³´µ¶·¸¹\u061b»¼½¾\u061f\u06c1\u0621\u0622\u0623\u0624\u0625\u0626\u0627"
     u"\u0628\u0629\u062a\u062b\u062c\u062d\u062e\u062f\u0630\u0631\u0632\u0633\u0634\u0635\u0636×"
     u"\u0637\u0638\u0639\u063a\u0640\u0641\u0642\u0643à\u0644â\u0645\u0646\u0647\u0648çèéêë\u0649"
     u"\u064aîï\u064b\u064c\u064d\u064eô\u064f\u0650÷\u0651ù\u0652ûü\u200e\u200f\u06d2"},
    // windows-1257
    {" windows1257 cp1257 ibm9449 ibm9449p1002002 ", 0x80,
     u"€\u0081‚\u0083„…†‡\u0088‰\u008a‹\u008c¨ˇ¸\u0090‘’“”•–—\u0098™\u009a›\u009c¯˛\u009f\u00a0\ufffd¢£"
     u"¤\ufffd¦§Ø©Ŗ«¬\u00ad®Æ°±²³´µ¶·ø¹ŗ»¼½¾æĄĮĀĆÄÅĘĒČÉŹĖĢĶĪĻŠŃŅÓŌÕÖ×ŲŁŚŪÜŻŽßąįāćäåęēčéźėģķīļšńņóōõö÷ųł"
     u"śūüżž˙"},
    // windows-1258
    {" windows1258 cp1258 ibm5354 ibm5354p1001998 ", 0x80,
     u"€\u0081‚ƒ„…†‡ˆ‰\u008a‹Œ\u008d\u008e\u008f\u0090‘’“”•–—˜™\u009a›œ\u009d\u009eŸ\u00a0¡¢£¤¥¦§¨©ª«¬"
     u"\u00ad®¯°±²³´µ¶·¸¹º»¼½¾¿ÀÁÂĂÄÅÆÇÈÉÊË\u0300ÍÎÏĐÑ\u0309ÓÔƠÖ×ØÙÚÛÜƯ\u0303ßàáâăäåæçèéêë\u0301íîïđñ"
     u"\u0323óôơö÷øùúûüư₫ÿ"},
    // IBM866
    {" ibm866 866 cp866 csibm866 ibm866p1001995 windows866 ", 0x80,
     u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмноп░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
     u"рстуфхцчшщъыьэюяЁёЄєЇїЎў°∙·√№¤■\u00a0"},
    // TIS-620
    {" tis620 ms874 windows874 windows8742000 xwindows874 ", 0x80,
     u"€\u0081\u0082\u0083\u0084…\u0086\u0087\u0088\u0089\u008a\u008b\u008c\u008d\u008e\u008f\u0090‘’“”"
     u"•–—\u0098\u0099\u009a\u009b\u009c\u009d\u009e\u009f\u00a0\u0e01\u0e02\u0e03\u0e04\u0e05\u0e06"
     u"\u0e07\u0e08\u0e09\u0e0a\u0e0b\u0e0c\u0e0d\u0e0e\u0e0f\u0e10\u0e11\u0e12\u0e13\u0e14\u0e15\u0e16"
     u"\u0e17\u0e18\u0e19\u0e1a\u0e1b\u0e1c\u0e1d\u0e1e\u0e1f\u0e20\u0e21\u0e22\u0e23\u0e24\u0e25\u0e26"
     u"\u0e27\u0e28\u0e29\u0e2a\u0e2b\u0e2c\u0e2d\u0e2e\u0e2f\u0e30\u0e31\u0e32\u0e33\u0e34\u0e35\u0e36"
     u"\u0e37\u0e38\u0e39\u0e3a\uf8c1\uf8c2\uf8c3\uf8c4\u0e3f\u0e40\u0e41\u0e42\u0e43\u0e44\u0e45\u0e46"
     u"\u0e47\u0e48\u0e49\u0e4a\u0e4b\u0e4c\u0e4d\u0e4e\u0e4f\u0e50\u0e51\u0e52\u0e53\u0e54\u0e55\u0e56"
     u"\u0e57\u0e58\u0e59\u0e5a\u0e5b\uf8c5\uf8c6\uf8c7\uf8c8"},
    // US-ASCII
    {" usascii 646 ansix341968 ansix341986 ascii ascii7 cp367 csascii ibm367 iso646irv1983 "
     "iso646irv1991 iso646us isoir6 us windows20127 ",
     0x80, u""},
};

constexpr std::string_view windows1251Names = " windows1251 ansi1251 cp1251 ibm5347 ibm5347p1001998 ";

// Encodings that Qt 5.15 with ICU decodes beyond these: East Asian ones, EBCDIC, those of DOS and of the Mac.
constexpr std::string_view foreignNames =
    " 1026 1047 1383 273 277 278 280 284 285 297 37 420 424 437 500 5601 775 838 850 851 852 855 857 860 "
    "861 862 863 865 868 869 871 970 adobestandardencoding big5 big5hk big5hkscs bocu1 ccsid1140 "
    "ccsid1141 ccsid1142 ccsid1143 ccsid1144 ccsid1145 ccsid1146 ccsid1147 ccsid1148 ccsid1149 ccsid858 "
    "cesu8 chinese cp1026 cp1047 cp1140 cp1141 cp1142 cp1143 cp1144 cp1145 cp1146 cp1147 cp1148 cp1149 "
    "cp1363 cp1383 cp273 cp277 cp278 cp280 cp284 cp285 cp290 cp297 cp37 cp420 cp424 cp437 cp500 cp775 "
    "cp838 cp850 cp851 cp852 cp855 cp857 cp858 cp860 cp861 cp862 cp863 cp864 cp865 cp868 cp869 cp870 "
    "cp871 cp918 cp932 cp936 cp943c cp970 cpar cpgr cpibm284 cpibm285 cpibm297 cpibm37 cpis "
    "csadobestandardencoding csbig5 csbocu1 cseuckr cseucpkdfmtjapanese csgb2312 cshproman8 csibm1026 "
    "csibm273 csibm277 csibm278 csibm280 csibm284 csibm285 csibm290 csibm297 csibm37 csibm420 csibm424 "
    "csibm500 csibm855 csibm857 csibm860 csibm861 csibm863 csibm864 csibm865 csibm868 csibm869 csibm870 "
    "csibm871 csibm918 csibmthai csiso2022cn csiso2022jp csiso2022jp2 csiso2022kr csiso58gb231280 "
    "csjisencoding csksc56011987 csmacintosh cspc775baltic cspc850multilingual cspc851 "
    "cspc862latinhebrew cspc8codepage437 cspcp852 cspcp855 csshiftjis cswindows31j dos862 ebcdiccpar1 "
    "ebcdiccpar2 ebcdiccpbe ebcdiccpca ebcdiccpch ebcdiccpdk ebcdiccpes ebcdiccpfi ebcdiccpfr "
    "ebcdiccpgb ebcdiccphe ebcdiccpis ebcdiccpit ebcdiccpnl ebcdiccpno ebcdiccproece ebcdiccpse "
    "ebcdiccpus ebcdiccpwt ebcdiccpyu ebcdicde ebcdicde273euro ebcdicdk ebcdicdk277euro ebcdices284euro "
    "ebcdicfi278euro ebcdicfr297euro ebcdicgb ebcdicgb285euro ebcdicinternational500euro ebcdicis "
    "ebcdicis871euro ebcdicit280euro ebcdicjpkana ebcdicno277euro ebcdicse278euro ebcdicsv "
    "ebcdicus37euro euccn eucjis eucjp eucjp2007 euckr extendedunixcodepackedformatforjapanese gb18030 "
    "gb2312 gb23121980 gb231219800 gb231280 gbk hkscsbig5 hp15cn hproman8 hz hzgb2312 ibm1026 "
    "ibm1026p1001995 ibm1047 ibm1047p1001995 ibm1051 ibm1051p1001995 ibm1140 ibm1140p1001997 ibm1141 "
    "ibm1141p1001997 ibm1142 ibm1142p1001997 ibm1143 ibm1143p1001997 ibm1144 ibm1144p1001997 ibm1145 "
    "ibm1145p1001997 ibm1146 ibm1146p1001997 ibm1147 ibm1147p1001997 ibm1148 ibm1148p1001997 ibm1149 "
    "ibm1149p1001997 ibm1212 ibm1213 ibm1214 ibm1215 ibm1276 ibm1276p1001995 ibm1363 ibm1363p11b1998 "
    "ibm1363vsubvpua ibm1375 ibm1375p1002008 ibm1383 ibm1383p1101999 ibm1383vpua ibm1392 ibm273 "
    "ibm273p1001995 ibm277 ibm277p1001995 ibm278 ibm278p1001995 ibm280 ibm280p1001995 ibm284 "
    "ibm284p1001995 ibm285 ibm285p1001995 ibm290 ibm290p1001995 ibm297 ibm297p1001995 ibm37 "
    "ibm37p1001995 ibm420 ibm420x1201999 ibm424 ibm424p1001995 ibm437 ibm437p1001995 ibm500 "
    "ibm500p1001995 ibm5054 ibm5478 ibm5478p1001995 ibm775 ibm775p1001996 ibm838 ibm838p1001995 ibm850 "
    "ibm850p1001995 ibm851 ibm851p1001995 ibm852 ibm852p1001995 ibm855 ibm855p1001995 ibm857 "
    "ibm857p1001995 ibm858 ibm858p1001997 ibm860 ibm860p1001995 ibm861 ibm861p1001995 ibm862 "
    "ibm862p1001995 ibm863 ibm863p1001995 ibm864 ibm864x1101999 ibm865 ibm865p1001995 ibm868 "
    "ibm868p1001995 ibm869 ibm869p1001995 ibm870 ibm870p1001995 ibm871 ibm871p1001995 ibm9030 ibm918 "
    "ibm918p1001995 ibm9400 ibm943 ibm943c ibm943p15a2003 ibm943vsubvpua ibm970 ibm970p110p1102006u2 "
    "ibm970vpua ibmeuccn ibmeuckr ibmthai iso2022cn iso2022cnext iso2022jp iso2022jp1 iso2022jp2 "
    "iso2022kr iso2022localejaversion0 iso2022localejaversion1 iso2022localejaversion2 "
    "iso2022localekoversion0 iso2022localezhversion0 iso2022localezhversion1 isoir149 isoir58 jis "
    "jisencoding korean ksc ksc5601 ksc56011987 ksc56011989 mac macce maccentraleurope maccy "
    "maccyrillic macgr macintosh macos02102 macos29102 macos35102 macos62104 macos73102 macroman mactr "
    "ms932 ms936 ms949 ms950 mskanji pck pcmultilingual850euro r8 roman8 scsu shiftjis sjis tscii ujis "
    "unicode11utf7 unicode20utf7 utf7 windows10000 windows10006 windows10007 windows10029 windows10081 "
    "windows31j windows437 windows51949 windows54936 windows65000 windows775 windows850 windows852 "
    "windows855 windows857 windows858 windows861 windows862 windows869 windows932 windows936 "
    "windows9362000 windows949 windows9492000 windows950 windows9502000 xbig5 xeucjp xibm1363c xibm970 "
    "xiso2022cngb xjisautodetect xksc5601 xmacce xmaccentraleurope xmaccentraleurroman xmaccyrillic "
    "xmacgreek xmacroman xmacturkish xmacukraine xms932213 xmscp932 xroman8 xsjis xwindows50220 "
    "xwindows50221 xwindows950 xwindowsiso2022jp ";

constexpr char16_t replacement = 0xfffd;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isListed(std::string_view name, std::string_view names) {
  return !name.empty() && names.find(' ' + std::string(name) + ' ') != std::string_view::npos;
}

}  // namespace

std::string encodingName(std::string_view name) {
  std::string form;
  bool isInNumber = false;
  for (std::size_t at = 0; at < name.size(); ++at) {
    const char c = name[at];
    const bool isLeadingZero = c == '0' && !isInNumber && at + 1 < name.size() && isDigit(name[at + 1]);
    if (isLeadingZero) continue;
    isInNumber = isDigit(c);
    if (c >= 'A' && c <= 'Z') form += static_cast<char>(c - 'A' + 'a');
    if ((c >= 'a' && c <= 'z') || isInNumber) form += c;
  }
  return form;
}

bool isWindows1251(std::string_view name) { return isListed(name, windows1251Names); }
bool isForeignEncoding(std::string_view name) { return isListed(name, foreignNames); }

const CodePage* findCodePage(std::string_view name) {
  const auto found = std::find_if(std::begin(pages), std::end(pages),
                                  [name](const CodePage& page) { return isListed(name, page.names); });
  return found == std::end(pages) ? nullptr : found;
}

char16_t toUnicode(const CodePage& page, unsigned char byte) {
  if (byte < page.first) return byte;
  const std::size_t index = byte - page.first;
  return index < page.characters.size() ? page.characters[index] : replacement;
}

bool hasCharacter(const CodePage& page, char32_t character) {
  if (character < page.first) return true;
  const auto& characters = page.characters;
  return character != replacement &&
         std::find(characters.begin(), characters.end(), character) != characters.end();
}

}  // namespace ztcad
