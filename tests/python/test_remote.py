"""The client of a Presidio service from Python."""

import http.server
import json
import threading

import core.anonymization_core as core
import pytest


def serve(monkeypatch, handler):
    monkeypatch.setenv("no_proxy", "127.0.0.1")
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server, f"http://127.0.0.1:{server.server_port}"


class Presidio(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        text = json.loads(self.rfile.read(int(self.headers["Content-Length"])))["text"]
        self.send_response(200)
        self.end_headers()
        answers = [self.hits(one) for one in ([text] if isinstance(text, str) else text)]
        self.wfile.write(json.dumps(answers[0] if isinstance(text, str) else answers).encode())

    @staticmethod
    def hits(text):
        at = text.find("张伟")
        hit = {"entity_type": "PER", "start": at, "end": at + 2, "score": 1.0}
        return [hit] if at >= 0 else []

    def log_message(self, *_):
        pass


def test_presidio_remote_analyzer(monkeypatch):
    server, url = serve(monkeypatch, Presidio)
    analyzer = core.PresidioRemoteAnalyzer(url)
    found = analyzer.analyze(text="😀张伟", language="zh")
    assert [(r.entity_type, r.start, r.end) for r in found] == [
        ("PERSON", 1, 3)
    ]
    assert [len(hits) for hits in analyzer.analyze_batch(["张伟", "", "甲方"], "zh")] == [1, 0, 0]
    refining = core.RefiningAnalyzer(analyzer)
    masked = core.anonymize_with_numbered_placeholders("😀张伟", refining, "zh")
    assert masked == "😀[NAME1]"

    both = core.build_analyzer()
    both.registry.recognizers += core.remote_recognizers(analyzer)
    masked = core.anonymize_with_numbered_placeholders("😀张伟，13800138000", both, "zh")
    assert masked == "😀[NAME1]，[PHONE1]"
    server.shutdown()
    server.server_close()
    gone = core.PresidioRemoteAnalyzer(url, retries=0)
    with pytest.raises(core.ExternalError, match=url + "/analyze: ") as failure:
        gone.analyze("张伟", "zh")
    assert "张伟" not in str(failure.value)
    with pytest.raises(ValueError):
        core.PresidioRemoteAnalyzer("localhost")


class Hanlp(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        text = json.loads(self.rfile.read(int(self.headers["Content-Length"])))["text"]
        assert self.headers["Authorization"] == "Basic abc"
        at = text.index("绿岸")
        answer = {"tok/fine": [list(text)], "ner/msra": [[["绿岸", "ORGANIZATION", at, at + 2]]]}
        self.send_response(200)
        self.end_headers()
        self.wfile.write(json.dumps(answer).encode())

    def log_message(self, *_):
        pass


def test_hanlp_service(monkeypatch):
    server, url = serve(monkeypatch, Hanlp)
    reasons = []
    finder = core.HanlpRecognizer(url=url, key="abc", fallback=reasons.append, retries=0)
    analyzer = core.build_analyzer()
    analyzer.registry.remove_recognizer("HanlpRecognizer")
    analyzer.registry.add_recognizer(finder)
    text = "😀绿岸付款，联系人：张伟"
    masked = core.anonymize_with_numbered_placeholders(text, analyzer, "zh")
    assert masked.startswith("😀[机构1]付款") and not reasons
    server.shutdown()
    server.server_close()
    masked = core.anonymize_with_numbered_placeholders(text, analyzer, "zh")
    assert "[NAME1]" in masked and len(reasons) == 1 and url in reasons[0]
    for wrong in ({"key": "abc"}, {"fallback": print}, {"url": "localhost"}):
        with pytest.raises(ValueError):
            core.HanlpRecognizer(**wrong)
