#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/more_organizations.hpp"
#include "core/nlp/name_pieces.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using recognition::WordClass;

constexpr double TRADE_NAME_SCORE = 0.6;
constexpr std::size_t SHORTEST_TRADE_BRAND = 2;
constexpr std::size_t LONGEST_TRADE_BRAND = 6;

// Trades that are verbs or goods as well: 王建国设计 is no company.
constexpr auto TRADE_VERBS = text::words(
    {U"设计",     U"运输",     U"咨询",     U"管理",     U"检测",     U"培训",     U"投资",
     U"建设",     U"担保",     U"租赁",     U"服务",     U"研究",     U"检验",     U"认证",
     U"诊断",     U"监理",     U"装饰",     U"包装",     U"印刷",     U"制造",     U"融资",
     U"营销",     U"策划",     U"起重",     U"驱动",     U"展览",     U"招标",     U"拍卖",
     U"保洁",     U"翻译",     U"康复",     U"教育",     U"照明",     U"传播",     U"种植",
     U"养殖",     U"充电",     U"技术",     U"设备",     U"数据",     U"材料",     U"产业",
     U"健康",     U"品牌",     U"财务",     U"资产",     U"知识产权", U"人才",     U"法律",
     U"饮料",     U"食品",     U"基金",     U"保险",     U"汽车",     U"音乐",     U"游戏",
     U"信息",     U"工程",     U"环境",     U"建筑",     U"水利",     U"燃气",     U"电力",
     U"能源",     U"石油",     U"钢铁",     U"粮食",     U"玻璃",     U"陶瓷",     U"橡胶",
     U"塑料",     U"涂料",     U"水泥",     U"软件",     U"芯片",     U"电池",     U"空调",
     U"电梯",     U"阀门",     U"锅炉",     U"机器人",   U"门窗",     U"服装",     U"家具",
     U"玩具",     U"饲料",     U"轴承",     U"零部件",   U"集成电路", U"半导体",   U"器械",
     U"仪器",     U"仪表",     U"五金制品", U"零售",     U"连锁",     U"经纪",     U"顾问",
     U"实业",     U"运营",     U"烘焙",     U"密封",     U"影像",     U"锻件",     U"装备",
     U"机械",     U"智能",     U"码头",     U"港口",     U"仓库管理", U"隧道",     U"清洗",
     U"拆除",     U"发电",     U"防水",     U"循环",     U"再生",     U"创业",     U"资本管理",
     U"人力",     U"食材",     U"药品",     U"中药",     U"显示",     U"海洋",     U"安全技术",
     U"规划设计", U"工程设计", U"货物运输", U"交通工程", U"车辆",     U"传感器",   U"物资",
     U"体检",     U"家教",     U"教学",     U"图书",     U"文体",     U"礼仪",     U"吊装",
     U"焊接",     U"礼品",     U"灌溉",     U"黄金",     U"摄影",     U"商务服务", U"信息服务",
     U"信息安全", U"网络安全", U"网络技术", U"软件技术", U"设备租赁", U"机械租赁", U"系统集成",
     U"肥料",     U"化肥",     U"种子",     U"农药",     U"钢材",     U"板材",     U"型材",
     U"铜材",     U"铝材",     U"不锈钢",   U"瓷砖",     U"地板",     U"窗帘",     U"床垫",
     U"厨房设备", U"电力设备", U"电气设备", U"机电设备", U"消防设备", U"气体设备", U"锅炉设备",
     U"机电安装", U"劳保用品", U"防护用品", U"体育用品", U"户外用品", U"宠物用品", U"医疗用品",
     U"宠物",     U"轮胎",     U"电动车",   U"无人机",   U"集装箱",   U"堆场",     U"卫星",
     U"遥感",     U"晶体",     U"颜料",     U"染料",     U"燃料",     U"燃油",     U"油品",
     U"润滑油",   U"齿轮",     U"弹簧",     U"螺丝",     U"气体",     U"桥梁",     U"灯光",
     U"音响",     U"餐具",     U"厨具",     U"教具",     U"白酒",     U"啤酒",     U"饮品",
     U"冷饮",     U"糕点",     U"海鲜",     U"肉类",     U"肉制品",   U"畜禽",     U"家禽",
     U"果品",     U"农产品",   U"农副产品", U"土特产",   U"水稻",     U"药材",     U"中药材",
     U"烟草",     U"酒类",     U"金属",     U"金属制品", U"首饰",     U"古玩",     U"私募",
     U"加油",     U"供电",     U"配电",     U"物业管理", U"物业服务", U"会计服务", U"税务咨询",
     U"地质",     U"勘察",     U"勘测",     U"测绘",     U"估价",     U"评估",     U"清洁",
     U"养护",     U"养生",     U"保健",     U"保健品",   U"理疗",     U"护理",     U"展示"});

// Names without a legal form: 昆山恒牛五金, 锦官担保.
class TradeNameSearch {
 public:
  TradeNameSearch(const NlpArtifacts& a, std::vector<RecognizerResult>& out)
      : a_(a), t_(a.folded), reader_(a), out_(out) {}

  void run() {
    const auto& trades = a_.of(WordClass::TRADE_WORD);
    std::size_t done = 0;
    for (std::size_t i = 0; i < trades.size(); ++i) {
      const std::size_t first = i;
      while (i + 1 < trades.size() && trades[i + 1].start == trades[i].end) ++i;
      if (trades[first].start < done || is_organization_end(trades[i].end) ||
          ends_organization(trades[first].start) ||
          !is_word_boundary(a_.chinese_words, trades[first].start)) {
        continue;
      }
      const std::size_t end = behind_bracket(trades[i].end);
      if (!reader_.is_right_edge(end)) continue;
      const NamePieces name = reader_.before(trades[first].start, done);
      const auto start = start_of(name, trades[first], trades[i], end);
      if (start == end) continue;
      out_.push_back(
          make_hit(anonymization::entity_type::ORGANIZATION, start, end, TRADE_NAME_SCORE));
      done = end;
    }
  }

 private:
  bool is_organization_end(std::size_t at) const {
    for (const auto c : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BRANCH,
                         WordClass::BANK, WordClass::INSTITUTION, WordClass::PUBLIC_BODY}) {
      if (end_of_word_at(a_.of(c), at) > at) return true;
    }
    return false;
  }

  // 春风彩印厂|印刷: what the factory does.
  bool ends_organization(std::size_t at) const {
    for (const auto c : {WordClass::COMPANY_FORM, WordClass::PLAIN_COMPANY, WordClass::BRANCH,
                         WordClass::BANK, WordClass::INSTITUTION, WordClass::PUBLIC_BODY}) {
      const auto it = first_from(a_.of(c), at);
      if (it != a_.of(c).begin() && std::prev(it)->end == at) return true;
    }
    return false;
  }

  // 卢森锚固系统(太仓)
  std::size_t behind_bracket(std::size_t at) const {
    if (at >= t_.size() || t_[at] != U'(') return at;
    const std::size_t place = reader_.place_end(at + 1);
    return place > at + 1 && place < t_.size() && t_[place] == U')' ? place + 1 : at;
  }

  // What stands directly before the trade: how many pieces are before it, and
  // whether some of it is no everyday word.
  struct Brand {
    std::size_t pieces_before = 0;
    bool unknown = false;
  };

  static Brand brand_of(const NamePieces& name) {
    Brand brand{name.pieces.size()};
    while (brand.pieces_before > 0) {
      const PieceKind kind = name.pieces[brand.pieces_before - 1].kind;
      if (kind == PieceKind::PLACE || kind == PieceKind::OTHER) break;
      brand.unknown = brand.unknown || kind == PieceKind::BRAND;
      --brand.pieces_before;
    }
    return brand;
  }

  static bool fits(std::size_t start, std::size_t end) {
    return end >= start + SHORTEST_TRADE_BRAND && end <= start + LONGEST_TRADE_BRAND;
  }

  // Where the name begins; `end` if it is none.
  std::size_t start_of(const NamePieces& name, const WordHit& first, const WordHit& last,
                       std::size_t end) const {
    if (name.empty()) return end;
    const Brand brand = brand_of(name);
    const bool closed = end >= t_.size() || !is_han(t_[end]);
    if (brand.pieces_before == 0) {
      const std::size_t start = name.pieces.front().start;
      const bool good = fits(start, first.start) && is_brand(name, last);
      return good && (closed || !is_verb(last)) ? start : end;
    }
    std::size_t place = brand.pieces_before - 1;
    const std::size_t brand_start = name.pieces[place].end;
    if (name.pieces[place].kind != PieceKind::PLACE || !fits(brand_start, first.start)) return end;
    while (place > 0 && name.pieces[place - 1].kind == PieceKind::PLACE) --place;
    const bool all = place == 0 && name.at_edge;
    // 襄阳净土|环境|咨询: two trades tell as much as an edge.
    const bool telling = brand.unknown ? all || closed
                                       : ((all && closed) || first.start != last.start) &&
                                             are_rare_words(brand_start, first.start);
    return telling ? name.pieces[place].start : end;
  }

  bool is_verb(const WordHit& trade) const {
    return TRADE_VERBS.contains(t_.substr(trade.start, trade.end - trade.start));
  }

  // No everyday words: characters that no word is made of, and no person's name.
  bool is_brand(const NamePieces& name, const WordHit& last) const {
    constexpr std::size_t LONGEST = 4;
    const std::size_t length = NamePieceReader::brand_length(name);
    const auto& pieces = name.pieces;
    if (!name.at_edge || length < SHORTEST_TRADE_BRAND || length > LONGEST ||
        pieces.back().end - pieces.front().start != length || !is_han(t_[pieces.front().start])) {
      return false;
    }
    const auto brand = t_.substr(pieces.front().start, length);
    const bool person = is_chinese_surname(brand.substr(0, 1)) && length <= 3;
    return !is_verb(last) && !(person && given_name_score(brand.substr(1)) > 0 && length == 3);
  }

  bool are_rare_words(std::size_t start, std::size_t end) const {
    constexpr unsigned COMMON = 20;
    for (std::size_t i = word_index(a_.chinese_words, start);
         i < a_.chinese_words.size() && a_.chinese_words[i].start < end; ++i) {
      if (a_.chinese_words[i].frequency > COMMON) return false;
    }
    return true;
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  NamePieceReader reader_;
  std::vector<RecognizerResult>& out_;
};

}  // namespace

void add_trade_named_organizations(const NlpArtifacts& artifacts,
                                   std::vector<RecognizerResult>& out) {
  TradeNameSearch(artifacts, out).run();
}

}  // namespace core::nlp
