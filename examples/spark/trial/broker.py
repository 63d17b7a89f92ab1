"""A broker of Kafka on this machine, in KRaft mode."""

from __future__ import annotations

import pathlib
import socket
import subprocess
import time

from driver import Failed

SETTINGS = """
process.roles=broker,controller
node.id=1
controller.quorum.voters=1@127.0.0.1:{controller}
controller.listener.names=CONTROLLER
listeners=PLAINTEXT://127.0.0.1:{port},CONTROLLER://127.0.0.1:{controller}
advertised.listeners=PLAINTEXT://127.0.0.1:{port}
listener.security.protocol.map=PLAINTEXT:PLAINTEXT,CONTROLLER:PLAINTEXT
log.dirs={folder}/data
num.partitions=4
offsets.topic.replication.factor=1
transaction.state.log.replication.factor=1
transaction.state.log.min.isr=1
"""


class Broker:
    """Runs as long as the block that it is used in. Topics are made when they are written to."""

    def __init__(self, jars: str, folder: pathlib.Path) -> None:
        self._java = ["java", "-Xmx384m", "-cp", f"{jars}/*"]
        self._folder = folder
        self._port, controller = _free_port(), _free_port()
        self.servers = f"127.0.0.1:{self._port}"
        folder.mkdir(parents=True)
        self._settings = folder / "server.properties"
        self._settings.write_text(
            SETTINGS.format(port=self._port, controller=controller, folder=folder)
        )

    def __enter__(self) -> "Broker":
        with (self._folder / "log").open("wb") as log:
            streams = {"stdout": log, "stderr": subprocess.STDOUT}
            subprocess.run(
                [*self._java, "kafka.tools.StorageTool", "format", "-c", str(self._settings),
                 "-t", "bouncecheck-try-000000"],
                check=True, **streams,  # type: ignore[call-overload]
            )
            self._process = subprocess.Popen(
                [*self._java, "kafka.Kafka", str(self._settings)],
                **streams,  # type: ignore[call-overload]
            )
        for _ in range(600):
            try:
                socket.create_connection(("127.0.0.1", self._port), 1).close()
                return self
            except OSError:
                time.sleep(0.1)
            if self._process.poll() is not None:
                break
        self.__exit__()
        raise Failed(f"{self._folder}/log: the broker does not start")

    def __exit__(self, *_: object) -> None:
        self._process.kill()
        self._process.wait()


def _free_port() -> int:
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        port: int = one.getsockname()[1]
        return port
