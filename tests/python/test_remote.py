"""The client of a Presidio service from Python."""

import http.server
import json
import threading

import core.anonymization_core as core
import pytest


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
    monkeypatch.setenv("no_proxy", "127.0.0.1")
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Presidio)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    url = f"http://127.0.0.1:{server.server_port}"
    analyzer = core.PresidioRemoteAnalyzer(url)
    found = analyzer.analyze(text="😀张伟", language="zh")
    assert [(r.entity_type, r.start, r.end) for r in found] == [
        ("PERSON", 1, 3)
    ]
    assert [len(hits) for hits in analyzer.analyze_batch(["张伟", "", "甲方"], "zh")] == [1, 0, 0]
    refining = core.RefiningAnalyzer(analyzer)
    masked = core.anonymize_with_numbered_placeholders("😀张伟", refining, "zh")
    assert masked == "😀[NAME1]"
    server.shutdown()
    server.server_close()
    gone = core.PresidioRemoteAnalyzer(url, retries=0)
    with pytest.raises(core.ExternalError, match=url + "/analyze: ") as failure:
        gone.analyze("张伟", "zh")
    assert "张伟" not in str(failure.value)
    with pytest.raises(ValueError):
        core.PresidioRemoteAnalyzer("localhost")
