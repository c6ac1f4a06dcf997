#!/usr/bin/python3
"""ftpServer.py pyftpdlib|vsftpd FOLDER: a real FTP server on a free port of the loopback device.

Prints the port and serves until it is ended. Anonymous users may do everything below FOLDER. pyftpdlib
also knows "anna" with the password "s3 cret:x", whose folder is FOLDER/anna.
"""
import ctypes
import logging
import os
import pwd
import signal
import socket
import subprocess
import sys

PR_SET_PDEATHSIG = 1
VSFTPD = {
    "listen": "NO",
    "run_as_launching_user": "YES",
    "ftp_username": pwd.getpwuid(os.getuid()).pw_name,
    "anonymous_enable": "YES",
    "local_enable": "NO",
    "write_enable": "YES",
    "anon_upload_enable": "YES",
    "anon_mkdir_write_enable": "YES",
    "anon_other_write_enable": "YES",
    "anon_world_readable_only": "NO",
    "allow_writeable_chroot": "YES",
    "seccomp_sandbox": "NO",
    "delay_failed_login": "0",
    "xferlog_enable": "NO",
}


def listen():
    listener = socket.create_server(("127.0.0.1", 0))
    print(listener.getsockname()[1], flush=True)
    return listener


def serve_pyftpdlib(folder):
    from pyftpdlib.authorizers import DummyAuthorizer
    from pyftpdlib.handlers import FTPHandler
    from pyftpdlib.servers import FTPServer

    logging.disable()
    FTPHandler.authorizer = DummyAuthorizer()
    FTPHandler.authorizer.add_anonymous(folder, perm="elradfmw")
    home = os.path.join(folder, "anna")
    os.mkdir(home)
    FTPHandler.authorizer.add_user("anna", "s3 cret:x", home, perm="elradfmw")
    FTPHandler.auth_failed_timeout = 0
    FTPServer(listen(), FTPHandler).serve_forever()


def end_with_parent():
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def serve_vsftpd(folder):
    command = ["/usr/sbin/vsftpd", folder + ".conf"]
    os.stat(command[0])
    with open(command[1], "w", encoding="utf-8") as settings:
        settings.writelines(f"{name}={value}\n" for name, value in VSFTPD.items())
        settings.write(f"anon_root={folder}\n")
    listener = listen()
    while True:
        client, _ = listener.accept()
        subprocess.Popen(command, stdin=client, stdout=client, preexec_fn=end_with_parent)
        client.close()


os.dup2(1, 2)  # who starts this shows the first line when it is no port
{"pyftpdlib": serve_pyftpdlib, "vsftpd": serve_vsftpd}[sys.argv[1]](sys.argv[2])
