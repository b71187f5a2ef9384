"""A web service for tests, on the loopback interface, with a certificate of its own.

web_server.py FOLDER  listens on free ports and writes them to the pipe FOLDER/ports in the order of `ports`: web
servers, one that closes every connection at once, and proxies. Its certificate is FOLDER/certificate.pem. Every request
that has been read whole is added to FOLDER/requests as it came, with a line "====" behind it; a proxy adds the line of
each request to FOLDER/proxied. The path of a request says what becomes of it, see ANSWERS. It ends when it is killed.
"""
import gzip
import os
import socket
import ssl
import subprocess
import sys
import threading
import time
import zlib

folder = sys.argv[1]
lock = threading.Lock()


def add(name, data):
    with lock, open(os.path.join(folder, name), "ab") as file:
        file.write(data)


def answer(connection, status, body=b"", *headers):
    lines = ["HTTP/1.1 %s X" % status, "Content-Length: %d" % len(body), "Connection: close", *headers]
    connection.sendall("\r\n".join(lines).encode() + b"\r\n\r\n" + body)


def text(status, body=b"fine"):
    return lambda connection, head: answer(connection, status, body)


def redirect(status, target):
    return lambda connection, head: answer(connection, status, b"", "Location: " + target)


def silence(connection, head):
    connection.recv(1)  # until the client has gone


def half(connection, head):
    connection.sendall(b"HTTP/1.1 200 X\r\nContent-Length: 100\r\n\r\nonly a part")


def no_http(connection, head):
    connection.sendall(b"hello\r\n")


def huge(connection, head):
    answer(connection, 200, bytes(65 << 20))


def trickle(connection, head):
    connection.sendall(b"HTTP/1.1 200 X\r\nContent-Length: 8\r\n\r\n")
    for _ in range(8):
        time.sleep(0.1)
        connection.sendall(b"x")


def packed(encoding, data):
    return lambda connection, head: answer(connection, 200, data, "Content-Encoding: " + encoding)


def cookie(connection, head):
    answer(connection, 302, b"", "Set-Cookie: taste=sweet", "Location: /cookies")


def header(name):
    def say(connection, head):
        found = [line for line in head.decode().split("\r\n") if line.lower().startswith(name + ":")]
        answer(connection, 200, "\n".join(found).encode())
    return say


def guarded(connection, head):
    if b"Authorization: Basic YWRhOnNlY3JldA==" in head:  # ada:secret
        answer(connection, 200, b"welcome")
    else:
        answer(connection, 401, b"", 'WWW-Authenticate: Basic realm="bills"')


ANSWERS = {
    "/mailer/send": text(200),
    "/500": text(500, b"Unauthorized: no such key"),
    "/silence": silence,
    "/half": half,
    "/hello": no_http,
    "/huge": huge,
    "/trickle": trickle,
    "/moved": redirect(302, "/mailer/send"),
    "/kept": redirect(307, "/mailer/send"),
    "/circle": redirect(302, "/circle"),
    "/gzip": packed("gzip", gzip.compress(b"packed well")),
    "/deflate": packed("deflate", zlib.compress(b"packed well")),
    "/cookie": cookie,
    "/cookies": header("cookie"),
    "/guarded": guarded,
}


def read_head(connection):
    head = b""
    while b"\r\n\r\n" not in head:
        piece = connection.recv(65536)
        if not piece:
            raise ConnectionError
        head += piece
    return head.split(b"\r\n\r\n", 1)


def length_of(head):
    for line in head.split(b"\r\n"):
        if line.lower().startswith(b"content-length:"):
            return int(line.split(b":")[1])
    return 0


def serve_request(connection):
    head, body = read_head(connection)
    path = head.split(b" ")[1].decode()
    if path == "/hangup":  # in the middle of what the client still sends
        return
    while len(body) < length_of(head):
        body += connection.recv(65536)
    add("requests", head + b"\r\n\r\n" + body + b"\n====\n")
    ANSWERS.get(path, redirect(302, "http://127.0.0.1:%d/mailer/send" % ports["http"]) if path == "/downgrade"
                else text(404))(connection, head)


def pump(source, target):
    try:
        while piece := source.recv(65536):
            target.sendall(piece)
    except OSError:
        pass
    target.close()


def serve_proxy(connection, refusal=None, pause=0):
    head, _ = read_head(connection)
    line = head.split(b"\r\n")[0]
    add("proxied", line + b"\n")
    if refusal:
        return answer(connection, refusal, b"", 'Proxy-Authenticate: Basic realm="way out"')
    host, port = line.split(b" ")[1].decode().split(":")
    target = socket.create_connection((host, int(port)))
    for byte in b"HTTP/1.1 200 X\r\n\r\n":
        time.sleep(pause)
        connection.sendall(bytes([byte]))
    threading.Thread(target=pump, args=(target, connection), daemon=True).start()
    pump(connection, target)


def refuse_socks(connection):
    if 2 in connection.recv(100)[2:]:  # the client has a name and a password, and may try them
        connection.sendall(b"\5\2")
        connection.recv(1000)
        connection.sendall(b"\1\1")
    else:
        connection.sendall(b"\5\0")
        connection.recv(1000)
        connection.sendall(b"\5\2\0\1\0\0\0\0\0\0")


def handle(serve, connection, wrap):
    try:
        with wrap(connection) as wrapped:
            serve(wrapped)
    except OSError:
        pass


def listen(serve, wrap=lambda connection: connection):
    server = socket.create_server(("127.0.0.1", 0))

    def accept():
        while True:
            connection, _ = server.accept()
            threading.Thread(target=handle, args=(serve, connection, wrap), daemon=True).start()

    threading.Thread(target=accept, daemon=True).start()
    return server.getsockname()[1]


def close_at_once(connection):
    connection.close()


certificate, key = folder + "/certificate.pem", folder + "/key.pem"
subprocess.run(
    ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2",
     "-subj", "/CN=tests", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", certificate],
    check=True, stderr=subprocess.DEVNULL)
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(certificate, key)

ports = {
    "https": listen(serve_request, lambda connection: context.wrap_socket(connection, server_side=True)),
    "http": listen(serve_request),
    "closing": listen(close_at_once),
    "proxy": listen(serve_proxy),
    "guarded": listen(lambda connection: serve_proxy(connection, refusal=407)),
    "refusing": listen(lambda connection: serve_proxy(connection, refusal=403)),
    "slow": listen(lambda connection: serve_proxy(connection, pause=0.05)),
    "socks": listen(refuse_socks),
}
with open(folder + "/ports", "w") as pipe:
    pipe.write(" ".join(str(port) for port in ports.values()) + "\n")
while True:
    time.sleep(1000)
