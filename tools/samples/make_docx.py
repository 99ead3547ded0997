#!/usr/bin/env python3
"""make_docx.py OUT.docx [PAGES]: a made-up contract that has a value in every place
where Word keeps one; with PAGES, that many pages of clauses behind it.

A picture that shows a value is left out: masking refuses it. MAKE_DOCX_LEAK=1 puts one
in, an EMF that draws a name letter by letter.

Needs python3-docx, of Debian, as the interpreter /usr/bin/python3 sees it.
"""

import io
import os
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


def moved():
    who = f'w:author="{PERSON}" w:date="2024-03-01T09:00:00Z"'
    return (
        f'<w:moveFrom w:id="83" {who}>{run(f"原处：{PERSON}。")}</w:moveFrom>'
        f'<w:moveTo w:id="84" {who}>{run(f"新处：{PERSON}。")}</w:moveTo>'
    )


def deleted_mark(first, second):
    """Two paragraphs that read as one with all changes accepted."""
    mark = f'<w:pPr><w:rPr><w:del w:id="85" w:author="{PERSON}" w:date="2024-03-01T09:00:00Z"/></w:rPr></w:pPr>'
    return paragraph(mark + run(first)), paragraph(run(second))


def revised_rows():
    who = f'w:author="{PERSON}" w:date="2024-03-01T09:00:00Z"'
    cell = "<w:tc><w:tcPr><w:tcW w:w=\"4000\" w:type=\"dxa\"/></w:tcPr><w:p>{}</w:p></w:tc>"
    return parse_xml(
        f"<w:tbl {NS}><w:tblPr><w:tblStyle w:val=\"TableGrid\"/></w:tblPr>"
        f'<w:tr><w:trPr><w:ins w:id="86" {who}/></w:trPr>'
        + cell.format(f'<w:ins w:id="87" {who}>{run(f"新增行：{SELLER}")}</w:ins>')
        + f'</w:tr><w:tr><w:trPr><w:del w:id="88" {who}/></w:trPr>'
        + cell.format(f'<w:del w:id="89" {who}>{run(f"删除行：{PERSON}", "w:delText")}</w:del>')
        + "</w:tr></w:tbl>"
    )


def within_a_value():
    """Elements and characters that a value is found through."""
    text = '<w:t xml:space="preserve">{}</w:t>'
    return (
        "<w:r>" + text.format("账户名：北京华信") + "<w:softHyphen/>" + text.format("科技有限公司，电话：0532")
        + "<w:noBreakHyphen/>" + text.format("88886666，邮箱：lina")
        + '<w:sym w:font="Arial" w:char="0040"/>' + text.format("huaxin-tech.com.cn，日期：２０２４年３月１日")
        + "</w:r>"
    )


def smart_tag():
    return (
        '<w:smartTag w:uri="urn:schemas-microsoft-com:office:smarttags" w:element="PersonName"><w:smartTagPr>'
        f'<w:attr w:name="ProductID" w:val="{PERSON}"/></w:smartTagPr>{run(PERSON)}</w:smartTag>'
    )


def picture_by_records():
    """An EMF that draws a name, one record a letter."""

    def record(kind, data):
        data += b"\0" * (-len(data) % 4)
        return struct.pack("<II", kind, len(data) + 8) + data

    letters = b"".join(
        record(84, bytes(16) + struct.pack("<IffiiIIIiiiiI", 1, 1.0, 1.0, 0, 0, 1, 76, 0, 0, 0, 0, 0, 0) + c.encode("utf-16-le"))
        for c in PERSON
    )
    end = record(14, struct.pack("<III", 0, 0, 20))
    head = struct.pack("<8i", 0, 0, 100, 40, 0, 0, 2600, 1000) + b" EMF"
    size = 88 + len(letters) + len(end)
    head += struct.pack("<IIIHHIIIiiii", 0x10000, size, 5, 1, 0, 0, 0, 0, 1024, 768, 320, 240)
    return record(1, head[:80]) + letters + end


def fill(document):
    document.core_properties.author = PERSON
    document.core_properties.title = f"{COMPANY}采购合同"
    section = document.sections[0]
    section.different_first_page_header_footer = True
    section.header.paragraphs[0].text = f"{COMPANY} 机密"
    section.first_page_header.paragraphs[0].text = f"首页 {SELLER}"
    section.footer.paragraphs[0].text = f"联系人：{PERSON}"
    document.settings.odd_and_even_pages_header_footer = True
    section.even_page_header.paragraphs[0].text = f"偶数页 {COMPANY}"
    document.styles.add_style(f"{PERSON}专用", 1).base_style = document.styles["Normal"]
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
        moved(),
        within_a_value(),
        smart_tag(),
        f'<w:pPr><w:pStyle w:val="{document.styles[PERSON + "专用"].style_id}"/></w:pPr>' + run("自定样式的段落"),
        f'<w:fldSimple w:instr=" AUTHOR {PERSON} ">{run(PERSON)}</w:fldSimple>',
        f'<w:hyperlink r:id="rMail" w:tooltip="{PERSON}">{run("写信")}</w:hyperlink>',
        run("尾注") + '<w:r><w:endnoteReference w:id="2"/></w:r>',
        run("脚注") + '<w:r><w:footnoteReference w:id="2"/></w:r>',
        '<w:commentRangeStart w:id="1"/>' + run("批注") + '<w:commentRangeEnd w:id="1"/>'
        '<w:r><w:commentReference w:id="1"/></w:r>',
    ):
        body.insert(len(body) - 1, paragraph(inner))
    for element in (*deleted_mark("开票单位：北京华信", "科技有限公司。"), revised_rows(), paragraph("")):
        body.insert(len(body) - 1, element)
    variables = f'<w:docVars {NS}><w:docVar w:name="buyer" w:val="{COMPANY}"/></w:docVars>'
    document.settings.element.append(parse_xml(variables))


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
    endnotes = notes.replace("footnote", "endnote").replace("章程", "公司章程")
    glossary = (
        f'<w:docParts><w:docPart><w:docPartPr><w:name w:val="{PERSON}签字栏"/></w:docPartPr>'
        f"<w:docPartBody><w:p>{run(f'{COMPANY}（盖章）')}</w:p></w:docPartBody></w:docPart></w:docParts>"
    )
    diagram = (
        '<dsp:drawing xmlns:dsp="http://schemas.microsoft.com/office/drawing/2008/diagram" '
        'xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main">'
        f"<a:p><a:r><a:t>{PERSON[:1]}</a:t></a:r><a:r><a:t>{PERSON[1:]}</a:t></a:r></a:p></dsp:drawing>"
    )
    w15 = 'xmlns:w15="http://schemas.microsoft.com/office/word/2012/wordml"'
    people = f'<w15:people {w15}><w15:person w15:author="{PERSON}"/></w15:people>'
    custom = (
        '<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/custom-properties">'
        f'<property name="{PERSON}"/></Properties>'
    )
    office = "application/vnd.openxmlformats-officedocument."
    leak = ()
    if os.environ.get("MAKE_DOCX_LEAK"):
        leak = (("word/media/name.emf", "image/x-emf", LINKS + "image", picture_by_records()),)
    return leak + (
        ("word/endnotes.xml", TYPES + "endnotes+xml", LINKS + "endnotes", f"<w:endnotes {NS}>{endnotes}</w:endnotes>"),
        ("word/glossary/document.xml", TYPES + "document.glossary+xml", LINKS + "glossaryDocument",
         f"<w:glossaryDocument {NS}>{glossary}</w:glossaryDocument>"),
        ("word/diagrams/drawing1.xml", "application/vnd.ms-office.drawingml.diagramDrawing+xml",
         "http://schemas.microsoft.com/office/2007/relationships/diagramDrawing", diagram),
        ("word/people.xml", TYPES + "people+xml",
         "http://schemas.microsoft.com/office/2011/relationships/people", people),
        ("word/commentsExtended.xml", TYPES + "commentsExtended+xml",
         "http://schemas.microsoft.com/office/2011/relationships/commentsExtended", f"<w15:commentsEx {w15}/>"),
        ("docProps/custom.xml", office + "custom-properties+xml", LINKS + "custom-properties", custom),
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
                links += f'<Relationship Id="rMail" Type="{LINKS}hyperlink" Target="mailto:{MAIL}" TargetMode="External"/>'
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
