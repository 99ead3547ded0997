#include <algorithm>

#include "core/recognition/checksums.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// yuchijz@ruiji-bearing.com.cn, o'brien@example.ie, info@münchen.de, info@例子.中国.
// Not 3@5, not a handle such as @qinyu.
const Regex RE_EMAIL(
    "RE_EMAIL",
    UR"([A-Za-z0-9](?:[A-Za-z0-9._%+'-]{0,63})@(?:(?:[A-Za-z0-9\u00DF-\u024F-]{1,63}\.){1,6}[A-Za-z]{2,24}(?![A-Za-z0-9])|[\u4e00-\u9fffA-Za-z0-9-]{1,20}\.(?:中国|公司|网络|集团|中文网|在线|商城)))");

// The "@" of zhang [at] example.com, zhang(at)example(dot)com
const Regex RE_WRITTEN_AT(
    "RE_WRITTEN_AT", UR"( ?[\[({] ?(?i:at|@) ?[\])}] ?| (?:at|AT) (?=[a-z0-9-]+ (?:dot|DOT) )| @ )",
    Regex::Scanned::YES);
// What stands behind it
const Regex RE_WRITTEN_DOMAIN(
    "RE_WRITTEN_DOMAIN",
    UR"([A-Za-z0-9-]{1,63}(?:(?: ?[\[({] ?(?i:dot) ?[\])}] ?| (?:dot|DOT) |\.)[A-Za-z0-9-]{1,63}){1,5}(?<=[A-Za-z]{2})(?![A-Za-z0-9-]))");

// https://vpn.cangpo-dairy.cn:8443/x?y=1, www.hengshanyu-data.com, sftp.alpenrose.ch,
// http://例子.中国, mysql://10.1.2.3:3306/db. Not e.g., not 3.2, not ASP.NET.
// The end of a sentence and a bracket around it stay outside.
const Regex RE_URL(
    "RE_URL",
    UR"((?i)(?<![A-Za-z0-9@._-])(?:(?:https?|wss?|s?ftps?|ssh|git|rtsp|rtmp|ldaps?|smb|file|mysql|postgres(?:ql)?|mongodb|redis|jdbc:[a-z]{2,12}|weixin)://(?:[\u4e00-\u9fff]{1,12}\.(?:中国|公司|网络|集团|中文网|在线))?[A-Za-z0-9._~%:/?#@!$&'*+=\u00DF-\u024F-]{0,300})"
    UR"(|(?:t\.me|t\.cn|t\.co|x\.com|b23\.tv|g\.co)/[A-Za-z0-9_./-]{2,60})"
    UR"(|(?!\d{1,2}\.|\d{4,6}\.(?:hk|sh|sz)(?![a-z.])|(?:asp|ado|vb)\.net(?![a-z.])|socket\.io(?![a-z.]))(?:[a-z0-9][a-z0-9-]{0,62}\.){0,4}[a-z0-9][a-z0-9-]{0,61}[a-z0-9]\.)"
    UR"((?:com|cn|net|org|gov|edu|io|co|info|biz|eu|uk|de|fr|hk|tw|mo|sg|jp|kr|my|vn|ph|ch|nl|be|es|pt|ie|it|no|se|dk|fi|pl|cz|au|nz|ca|us|mx|br|za|ru|in|ae|sa|tr|me|ai|tv|cc|top|xyz|vip|shop|store|site|online|club|wang|ren|ltd|tech|cloud|app|dev|asia|mobi|pro|group|example|xn--[a-z0-9]{2,30})(?:\.[a-z]{2})?(?::\d{1,5})?(?:/[A-Za-z0-9._~%:/?#@!$&'*+=-]{0,300})?)(?<![.,:?!'])(?![A-Za-z0-9@]))");

// 198.51.100.24. Not a version or a clause: 12.10.1.2 needs a word such as IP before it.
const Regex RE_IPV4(
    "RE_IPV4",
    UR"((?<![\d.])(?:(?:25[0-5]|2[0-4]\d|1?\d?\d)\.){3}(?:25[0-5]|2[0-4]\d|1?\d?\d)(?!\d|\.\d))");

// 10.0.0.0 of 10.0.0.0/16
const Regex RE_IPV4_NETWORK(
    "RE_IPV4_NETWORK",
    UR"((?<![\d.])(?:(?:25[0-5]|2[0-4]\d|1?\d?\d)\.){3}(?:25[0-5]|2[0-4]\d|1?\d?\d)(?=/(?:[89]|[12]\d|3[0-2])(?!\d)))");

// 2001:db8:4f0:2::15, fe80::1%eth0, 2001:db8::. Not the time 12:30:45.
const Regex RE_IPV6(
    "RE_IPV6",
    UR"((?<![A-Za-z0-9:])(?=[0-9A-Fa-f:]{0,40}::|(?:[0-9A-Fa-f]{1,4}:){7})(?:(?:[0-9A-Fa-f]{1,4}::?){1,7}(?:(?:\d{1,3}\.){3}\d{1,3}|[0-9A-Fa-f]{1,4}(?:%[A-Za-z0-9]{1,12})?)|(?:[0-9A-Fa-f]{1,4}:){2,7}:)(?![A-Za-z0-9:]))");
// ::1, ::ffff:192.168.1.1
const Regex RE_SHORT_IPV6(
    "RE_SHORT_IPV6",
    UR"(::(?<![A-Za-z0-9:]::)(?=[0-9A-Fa-f:]{0,40}\d)(?:ffff:(?:\d{1,3}\.){3}\d{1,3}|[0-9A-Fa-f]{1,4}(?::[0-9A-Fa-f]{1,4}){0,6})(?![A-Za-z0-9:.]))");

// 00:1A:2B:3C:4D:5E, 00-1a-2b-3c-4d-5e, 001A.2B3C.4D5E
const Regex RE_MAC(
    "RE_MAC",
    UR"((?<![0-9A-Za-z:.-])(?:[0-9A-Fa-f]{2}:(?:[0-9A-Fa-f]{2}:){4}[0-9A-Fa-f]{2}|[0-9A-Fa-f]{2}-(?:[0-9A-Fa-f]{2}-){4}[0-9A-Fa-f]{2}|[0-9A-Fa-f]{4}\.[0-9A-Fa-f]{4}\.[0-9A-Fa-f]{4})(?![0-9A-Za-z:-]|\.\d))");
// MAC地址：001A2B3C4D5E
const Regex RE_LABELLED_MAC(
    "RE_LABELLED_MAC",
    UR"((?<![A-Za-z])(?:MAC|Mac)(?: ?地址| ?[Aa]ddress)? ?[:#]? ?([0-9A-Fa-f]{12})(?![0-9A-Za-z]))");

// Wallets: 1A1zP1…, 3J98t1…, T… (TRON), bc1q…, 0x742d… (also the hash of a transaction)
const Regex RE_WALLET(
    "RE_WALLET",
    UR"((?:[13][1-9A-HJ-NP-Za-km-z]{25,34}|T[1-9A-HJ-NP-Za-km-z]{33}|bc1[02-9ac-hj-np-z]{11,71}|0x(?:[0-9A-Fa-f]{64}|[0-9A-Fa-f]{40}))(?![0-9A-Za-z]))");

// 微信：zgwq_0822, QQ群 782046619, Telegram @rdcsantillan. Not an Instagram account.
const Regex RE_LABELLED_SOCIAL(
    "RE_LABELLED_SOCIAL",
    UR"((?i)[ \t]{0,3}(?:号|账号|id|(?:account|handle|page|profile|channel|user(?:name)?)s?(?![a-z]))?[ \t]{0,2}:?[ \t]{0,3}((?!(?:accounts?|handles?|pages?|profiles?|channels?|username|group)(?![a-z]))@?(?:live:)?[A-Za-z][A-Za-z0-9_-]{3,30}(?<=.{5})(?:\.[A-Za-z0-9_-]{1,30}){0,2}(?:#\d{4}(?!\d))?|\d{5,13})(?![A-Za-z0-9@]|\.[A-Za-z0-9]))");

// 公众号“华信视界”, 微信公众号：华信视界: the name of a channel in quotes or alone
const Regex RE_CHANNEL(
    "RE_CHANNEL",
    UR"((?:号|账号|帐号|平台)?[ ]{0,2}(?::?[ ]{0,2}[“"「『]([^“”"「」『』\n]{2,20})[”"」』]|(?<=众号|频号|阅号|务号|众号 ):[ ]{0,2}([\u4e00-\u9fffA-Za-z0-9]{2,16})(?=[ ，。；、;,)\n\t]|$)))");

// wxid_k7m2sha88: what WeChat gives to those who choose none
const Regex RE_WECHAT_ID("RE_WECHAT_ID", UR"(wxid_[a-z0-9]{6,24}(?![A-Za-z0-9]))");

// @qinyu_hainan, @北境长歌手游. Not the @ of a mail address.
const Regex RE_HANDLE(
    "RE_HANDLE",
    UR"((?<![A-Za-z0-9.])@(?:[A-Za-z_][A-Za-z0-9_]{2,30}(?:\.[A-Za-z0-9_]{2,20})?|[\u4e00-\u9fff]{2,12}(?:\d{1,4}号?)?)(?![A-Za-z0-9]|\.[A-Za-z0-9\u4e00-\u9fff]))");

// A clause has no such high number, an address of the network nearly always.
std::optional<bool> validate_ip(std::u32string_view surface) {
  constexpr int HIGHEST_SECTION = 30;
  if (surface.find(U':') != surface.npos) return true;
  int value = 0;
  for (const char32_t c : surface) {
    value = text::is_ascii_digit(c) ? value * 10 + static_cast<int>(c - U'0') : 0;
    if (value > HIGHEST_SECTION) return true;
  }
  return std::nullopt;
}

// Letters of both cases and digits: no word and no number of the same alphabet.
std::optional<bool> validate_wallet(std::u32string_view s) {
  if (s.starts_with(U"0x")) return true;
  if (s.starts_with(U"bc1")) return is_bech32_valid(s);
  if (is_base58check_valid(s)) return true;
  const auto has = [&](char32_t from, char32_t to) {
    return std::any_of(s.begin(), s.end(), [&](char32_t c) { return c >= from && c <= to; });
  };
  // With a slip of the pen, or of another chain: less sure
  return has(U'A', U'Z') && has(U'a', U'z') && has(U'0', U'9') ? std::nullopt
                                                               : std::optional(false);
}

// Addresses written so that programs do not find them.
class WrittenEmailRecognizer : public EntityRecognizer {
 public:
  WrittenEmailRecognizer()
      : EntityRecognizer("WrittenEmailRecognizer", {std::string(entity_type::EMAIL_ADDRESS)}) {}

  std::vector<RecognizerResult> analyze(const NlpArtifacts& a) const override {
    constexpr double SCORE = 0.85;
    const std::u32string_view t = a.folded;
    std::vector<RecognizerResult> out;
    for (const auto& m : RE_WRITTEN_AT.find_all(t, a.index)) {
      std::size_t start = m.start();
      while (start > 0 && m.start() - start < MAX_LOCAL_PART && is_local_part(t[start - 1]))
        --start;
      const auto seen = t.substr(0, m.end() + PatternRecognizer::WINDOW);
      const auto domain = RE_WRITTEN_DOMAIN.match_at(seen, m.end());
      if (start == m.start() || !domain) continue;
      out.push_back({std::string(entity_type::EMAIL_ADDRESS), static_cast<std::ptrdiff_t>(start),
                     static_cast<std::ptrdiff_t>(domain->end()), SCORE});
    }
    return out;
  }

 private:
  static constexpr std::size_t MAX_LOCAL_PART = 64;

  static bool is_local_part(char32_t c) {
    return text::is_ascii_alnum(c) || c == U'.' || c == U'_' || c == U'-' || c == U'+';
  }
};

}  // namespace

void add_contact_recognizers(RecognizerRegistry& registry) {
  const auto add = [&](PatternRecognizerConfig config) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  };
  add({"EmailRecognizer",
       std::string(entity_type::EMAIL_ADDRESS),
       {{"e-mail", &RE_EMAIL, 0.95, AT_SIGN}}});
  registry.add_recognizer(std::make_shared<WrittenEmailRecognizer>());
  add({"UrlRecognizer", std::string(entity_type::URL), {{"URL", &RE_URL, 0.8, {}}}});
  add({"IpRecognizer",
       std::string(entity_type::IP_ADDRESS),
       {{"IPv4", &RE_IPV4, 0.2, AT_NUMBER},
        {"IPv4 network", &RE_IPV4_NETWORK, 0.6, AT_NUMBER},
        {"IPv6", &RE_IPV6, 0.8, AT_NUMBER},
        {"short IPv6", &RE_SHORT_IPV6, 0.8, {}}},
       {U"ip", U"地址", U"网段", U"服务器", U"主机", U"server", U"host", U"address"},
       validate_ip});
  add({"MacAddressRecognizer",
       "MAC_ADDRESS",
       {{"groups", &RE_MAC, 0.8, {}}, {"behind a label", &RE_LABELLED_MAC, 0.8, {}}}});
  add({"CryptoRecognizer",
       "CRYPTO",
       {{"wallet", &RE_WALLET, 0.5, AT_NUMBER}},
       {},
       validate_wallet});
  add({"SocialAccountRecognizer",
       std::string(entity_type::SOCIAL_ACCOUNT),
       {{"behind a label", &RE_LABELLED_SOCIAL, 0.8, after(WordClass::SOCIAL_LABEL)},
        {"channel", &RE_CHANNEL, 0.7, after(WordClass::SOCIAL_LABEL)},
        {"WeChat", &RE_WECHAT_ID, 0.9, {}},
        {"handle", &RE_HANDLE, 0.7, AT_SIGN}}});
}

}  // namespace core::recognition
