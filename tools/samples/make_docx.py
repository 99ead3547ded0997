#!/usr/bin/env python3
"""make_docx.py OUT.docx [PAGES]: a made-up contract that has a value in every place
where Word keeps one; with PAGES, that many pages of clauses behind it.

Needs python3-docx, of Debian, as the interpreter /usr/bin/python3 sees it.
"""

import io
import struct
import sys
import zipfile
import zlib

import docx
from docx.oxml import parse_xml
from docx.oxml.ns import nsdecls
from docx.shared import Cm

COMPANY = "北京华信科技有限公司"
SELLER = "上海明德机械制造有限公司"
PERSON = "张伟民"
MAIL = "zhangweimin@huaxin-tech.com.cn"
NS = (
    nsdecls("w", "r", "wp", "a")
    + ' xmlns:mc="http://schemas.openxmlformats.org/markup-compatibility/2006"'
    + ' xmlns:wps="http://schemas.microsoft.com/office/word/2010/wordprocessingShape"'
    + ' xmlns:v="urn:schemas-microsoft-com:vml" xmlns:o="urn:schemas-microsoft-com:office:office"'
)
TYPES = "application/vnd.openxmlformats-officedocument.wordprocessingml."
LINKS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"


def run(text, tag="w:t"):
    return f'<w:r><{tag} xml:space="preserve">{text}</{tag}></w:r>'


def paragraph(inner):
    return parse_xml(f"<w:p {NS}>{inner}</w:p>")


def picture():
    """A grey PNG of 16 by 16."""

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    rows = b"".join(b"\0" + b"\x80" * 16 for _ in range(16))
    head = struct.pack(">IIBBBBB", 16, 16, 8, 0, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


def text_box(text):
    content = f"<w:txbxContent><w:p>{run(text)}</w:p></w:txbxContent>"
    return (
        '<w:r><mc:AlternateContent><mc:Choice Requires="wps"><w:drawing><wp:inline distT="0" distB="0"'
        ' distL="0" distR="0"><wp:extent cx="2400000" cy="600000"/>'
        f'<wp:docPr id="71" name="{PERSON}" descr="{COMPANY}"/><a:graphic>'
        '<a:graphicData uri="http://schemas.microsoft.com/office/word/2010/wordprocessingShape"><wps:wsp>'
        '<wps:cNvSpPr txBox="1"/><wps:spPr><a:xfrm><a:off x="0" y="0"/><a:ext cx="2400000" cy="600000"/>'
        '</a:xfrm><a:prstGeom prst="rect"><a:avLst/></a:prstGeom></wps:spPr>'
        f"<wps:txbx>{content}</wps:txbx><wps:bodyPr/></wps:wsp></a:graphicData></a:graphic></wp:inline>"
        "</w:drawing></mc:Choice><mc:Fallback><w:pict>"
        f'<v:shape style="width:190pt;height:48pt" alt="{PERSON}"><v:textbox>{content}</v:textbox></v:shape>'
        "</w:pict></mc:Fallback></mc:AlternateContent></w:r>"
    )


def field(instruction, result):
    mark = '<w:r><w:fldChar w:fldCharType="{}"/></w:r>'
    half = len(instruction) // 2
    code = run(instruction[:half], "w:instrText") + run(instruction[half:], "w:instrText")
    return mark.format("begin") + code + mark.format("separate") + run(result) + mark.format("end")


def changes():
    who = f'w:author="{PERSON}" w:date="2024-03-01T09:00:00Z"'
    return (
        run("付款人：")
        + f'<w:del w:id="81" {who}>{run(SELLER, "w:delText")}</w:del>'
        + f'<w:ins w:id="82" {who}>{run(COMPANY)}</w:ins>'
        + run("。")
    )


def control():
    return (
        f'<w:sdt><w:sdtPr><w:alias w:val="签字人{PERSON}"/><w:tag w:val="signer"/>'
        '<w:dataBinding w:xpath="/a" w:storeItemID="{0}"/><w:text/></w:sdtPr>'
        f"<w:sdtContent>{run(PERSON)}</w:sdtContent></w:sdt>"
    )


def ruby():
    return (
        '<w:r><w:ruby><w:rubyPr><w:rubyAlign w:val="center"/><w:hps w:val="10"/><w:hpsRaise w:val="18"/>'
        '<w:hpsBaseText w:val="21"/><w:lid w:val="zh-CN"/></w:rubyPr>'
        f"<w:rt>{run('zhang wei min')}</w:rt><w:rubyBase>{run(PERSON)}</w:rubyBase></w:ruby></w:r>"
    )


def fill(document):
    document.core_properties.author = PERSON
    document.core_properties.title = f"{COMPANY}采购合同"
    section = document.sections[0]
    section.different_first_page_header_footer = True
    section.header.paragraphs[0].text = f"{COMPANY} 机密"
    section.first_page_header.paragraphs[0].text = f"首页 {SELLER}"
    section.footer.paragraphs[0].text = f"联系人：{PERSON}"
    document.add_heading("设备采购合同", 0)
    split = document.add_paragraph("买方（甲方）：")
    for i, part in enumerate((COMPANY[:3], COMPANY[3:7], COMPANY[7:])):
        split.add_run(part).bold = i % 2 == 0
    document.add_paragraph(f"卖方（乙方）：{SELLER}")
    document.add_paragraph(f"法定代表人：{PERSON}，电话：138\u20111234\u20115678，邮箱：{MAIL}")
    document.add_paragraph("合同总价为人民币3,280,000.00元，签订日期为2024年3月1日。")
    table = document.add_table(rows=2, cols=3)
    table.style = "Table Grid"
    for cell, text in zip(table.rows[0].cells, ("联系人", "电话", "单位")):
        cell.text = text
    for cell, text in zip(table.rows[1].cells, (PERSON, "13812345678", COMPANY)):
        cell.text = text
    table.rows[1].cells[2].add_table(1, 1).rows[0].cells[0].text = f"收款人：{SELLER}"
    document.add_picture(io.BytesIO(picture()), width=Cm(1))
    body = document.element.body
    for inner in (
        text_box(f"盖章：{COMPANY}"),
        field(f' HYPERLINK "mailto:{MAIL}" ', MAIL),
        field(f" MERGEFIELD {PERSON} ", PERSON),
        field(" PAGE ", "1"),
        changes(),
        control(),
        ruby(),
        f'<w:bookmarkStart w:id="91" w:name="{PERSON}"/>{run("见附件")}<w:bookmarkEnd w:id="91"/>',
        run("北京华信\u200b科技有限公司") + '<w:r><w:rPr><w:vanish/></w:rPr><w:t>' + PERSON + "</w:t></w:r>",
        run("脚注") + '<w:r><w:footnoteReference w:id="2"/></w:r>',
        '<w:commentRangeStart w:id="1"/>' + run("批注") + '<w:commentRangeEnd w:id="1"/>'
        '<w:r><w:commentReference w:id="1"/></w:r>',
    ):
        body.insert(len(body) - 1, paragraph(inner))


def add_clauses(document, pages):
    for i in range(pages * 18):
        document.add_paragraph(
            f"{i + 1}. {COMPANY}应于2024年{i % 12 + 1}月{i % 28 + 1}日前向{SELLER}支付人民币{i * 37 + 1000}元，"
            f"由{PERSON}签收；逾期的，每日按未付金额的万分之五支付违约金。"
        )


def extra_parts():
    notes = "".join(
        f'<w:footnote w:type="{kind}" w:id="{i}"><w:p><w:r><w:{mark}/></w:r></w:p></w:footnote>'
        for i, (kind, mark) in enumerate((("separator", "separator"), ("continuationSeparator", "continuationSeparator")))
    )
    notes += f'<w:footnote w:id="2"><w:p>{run(f"参见{SELLER}章程。")}</w:p></w:footnote>'
    comment = (
        f'<w:comment w:id="1" w:author="{PERSON}" w:initials="ZWM" w:date="2024-03-01T09:00:00Z">'
        f"<w:p>{run(f'请{PERSON}确认')}</w:p></w:comment>"
    )
    return (
        ("word/footnotes.xml", TYPES + "footnotes+xml", LINKS + "footnotes", f"<w:footnotes {NS}>{notes}</w:footnotes>"),
        ("word/comments.xml", TYPES + "comments+xml", LINKS + "comments", f"<w:comments {NS}>{comment}</w:comments>"),
        ("customXml/item9.xml", "application/xml", LINKS + "customXml", f"<data><buyer>{COMPANY}</buyer></data>"),
    )


def add_parts(source, target):
    parts = extra_parts()
    with zipfile.ZipFile(source) as old, zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as new:
        for name in old.namelist():
            data = old.read(name).decode("utf-8") if name.endswith((".xml", ".rels")) else old.read(name)
            if name == "[Content_Types].xml":
                types = "".join(f'<Override PartName="/{n}" ContentType="{t}"/>' for n, t, _, _ in parts)
                data = data.replace("</Types>", types + "</Types>")
            if name == "word/_rels/document.xml.rels":
                links = "".join(
                    f'<Relationship Id="rX{i}" Type="{link}" Target="/{n}"/>' for i, (n, _, link, _) in enumerate(parts)
                )
                data = data.replace("</Relationships>", links + "</Relationships>")
            new.writestr(name, data)
        for name, _, _, data in parts:
            new.writestr(name, data)


def main():
    document = docx.Document()
    fill(document)
    if len(sys.argv) > 2:
        add_clauses(document, int(sys.argv[2]))
    plain = io.BytesIO()
    document.save(plain)
    add_parts(plain, sys.argv[1])


if __name__ == "__main__":
    main()
