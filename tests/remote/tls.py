#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A real node_exporter behind TLS, with certificates of the test's own: tls.py VANTOR-TERM.

It is believed with its authority and not without; it believes us with our certificate and password and not without; a
token goes through TLS as well; nothing of a secret is ever told."""
import json, pathlib, ssl, sys, tempfile

from support import *

TERM = sys.argv[1]
SECRET = "a secret of the test"
HASH = "$2b$04$a/gIduNUAzlekOwkIO5vWuGIoCDrZ50gb7.6D/VJ2GFljDubZhwbS"  # of the secret, by bcrypt at its cheapest


def certificate(folder, name, *more):
    """name.pem and name.key, signed by ca.key where there is one."""
    authority = [] if name == "ca" else ["-CA", "ca.pem", "-CAkey", "ca.key"]
    done = subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2",
                           "-subj", f"/CN={name}", "-keyout", name + ".key", "-out", name + ".pem", *authority, *more], cwd=folder, capture_output=True,
                          text=True)
    if done.returncode != 0:
        sys.exit(done.stderr)


def asked(folder, url, config):
    """A report of the machine, through a list with these keys of Prometheus's own."""
    place = folder / ".config/vantor"
    place.mkdir(parents=True, exist_ok=True)
    (place / "fleet.json").write_text(json.dumps({"sources": [{"nodes": [url], "http_config": config}]}))
    result = run(TERM, "--machine", url, "--once", "--format", "json", home=str(folder))
    check(f"{config}: a secret is told", not any(word in result.stdout + result.stderr for word in (SECRET, "a token", HASH)))
    return result


def fails(folder, url, config, words):
    result = asked(folder, url, config)
    check(f"{url} with {config}: {result.returncode} {result.stderr}", result.returncode == 1 and not result.stdout and words in result.stderr)


def works(folder, url, config):
    result = asked(folder, url, config)
    check(f"{url} with {config}: {result.stderr}", result.returncode == 0 and json.loads(result.stdout)["ram"]["total"] > 0)


def with_an_exporter(folder):
    (folder / "web.yml").write_text(f"""
tls_server_config: {{ cert_file: {folder}/server.pem, key_file: {folder}/server.key, client_auth_type: RequireAndVerifyClientCert, client_ca_file: {folder}/ca.pem }}
basic_auth_users: {{ me: {HASH} }}
""")
    believed = {"ca_file": f"{folder}/ca.pem"}
    ours = {"cert_file": f"{folder}/me.pem", "key_file": f"{folder}/me.key"}
    password = {"username": "me", "password_file": f"{folder}/password"}
    with Real("prometheus-node-exporter", f"--web.config.file={folder}/web.yml") as exporter:
        url = f"https://{exporter.address}"
        works(folder, url, {"tls_config": believed | ours, "basic_auth": password})
        works(folder, url, {"tls_config": ours | {"insecure_skip_verify": True}, "basic_auth": password})
        fails(folder, url, {"basic_auth": password}, "its certificate is not trusted")
        fails(folder, url, {"tls_config": believed, "basic_auth": password}, "certificate")
        fails(folder, url, {"tls_config": believed | ours}, "status 401")
        fails(folder, url, {"tls_config": believed | ours, "basic_auth": password | {"username": "you"}}, "status 401")
        fails(folder, url.replace("127.0.0.1", "localhost"), {"tls_config": believed | ours}, "its certificate is not trusted")
        fails(folder, url.replace("https", "http"), {}, "status 400")
        (folder / "password").chmod(0o644)
        fails(folder, url, {"tls_config": believed | ours, "basic_auth": password}, "others")


def with_a_token(folder):
    def answer(connection, head, server):
        is_known = "\r\nAuthorization: Bearer a token\r\n" in head and "\r\nX-Scope-OrgID: ops\r\n" in head
        (page(exposition) if is_known else page("Unauthorized", "401 Unauthorized"))(connection, head, server)

    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(folder / "server.pem", folder / "server.key")
    config = {"tls_config": {"ca_file": f"{folder}/ca.pem"}, "http_headers": {"X-Scope-OrgID": {"values": ["ops"]}}}
    with Server(answer, context) as server:
        works(folder, f"https://{server.address}", config | {"authorization": {"credentials_file": f"{folder}/token"}})
        fails(folder, f"https://{server.address}", config, "status 401")
    with Real("prometheus-node-exporter") as plain:
        fails(folder, f"https://{plain.address}", config, "no TLS there")


def with_a_part_missing(folder):
    """Of two sources one has a secret that cannot be used: the other is told, and that a part is missing."""
    (folder / "token").chmod(0o644)
    with Real("prometheus-node-exporter") as plain:
        (folder / ".config/vantor/fleet.json").write_text(json.dumps({"sources": [
            {"name": "locked", "prometheus": plain.address, "http_config": {"authorization": {"credentials_file": "../../token"}}},
            {"name": "plain", "nodes": [plain.address]}]}))
        result = run(TERM, "--fleet", "--once", "--format", "json", home=str(folder))
        told = json.loads(result.stdout)
        check(f"a part is missing: {result.returncode} {result.stderr}", result.returncode == 1 and "locked: " in result.stderr and "others" in result.stderr)
        check(f"a part is missing: {told}", {source["source"]: source["isSilent"] for source in told["sources"]} == {"plain": False, "locked": True}
              and [machine["state"] for machine in told["machines"]] == ["up"] and "others" in told["sources"][1]["problem"])


need("prometheus-node-exporter", "openssl")
with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    certificate(folder, "ca")
    certificate(folder, "server", "-addext", "subjectAltName=IP:127.0.0.1")
    certificate(folder, "me", "-addext", "extendedKeyUsage=clientAuth")
    for file, text in {"password": SECRET, "token": "a token"}.items():
        (folder / file).write_text(text + "\n")
        (folder / file).chmod(0o600)
    with_an_exporter(folder)
    with_a_token(folder)
    with_a_part_missing(folder)
finish()
