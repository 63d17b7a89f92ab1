# Sourced by try and by bench/spark: fetches what they need below build/spark and builds the Python
# package there. Sets `spark`, the folder, and the environment that Spark is run in.

spark=$root/build/spark
export PYSPARK_PYTHON=$spark/venv/bin/python PYSPARK_DRIVER_PYTHON=$spark/venv/bin/python
export SPARK_LOCAL_IP=127.0.0.1 PYTHONDONTWRITEBYTECODE=1 PIP_DISABLE_PIP_VERSION_CHECK=1
unset SPARK_HOME

is_fetched() {
    cmp -s "$root/examples/spark/requirements.txt" "$spark/venv/requirements.txt"
}

# Spark from PyPI, into an environment of its own. False when PyPI cannot be reached.
fetch_spark() {
    is_fetched && return
    echo "Fetching Spark, some minutes ..." >&2
    rm -rf "$spark/venv"
    mkdir -p "$spark"
    python3 -m venv "$spark/venv"
    # pyspark and py4j: the first has no wheel, and is not to build by others than these.
    quietly "$spark/venv/bin/pip" install --no-deps setuptools==75.8.0 wheel==0.45.1 \
        $(grep -E '^(nanobind|scikit_build_core|packaging|pathspec)==' "$root/bindings/python/requirements.txt") &&
        quietly "$spark/venv/bin/pip" install --no-deps --no-build-isolation \
            -r "$root/examples/spark/requirements.txt" || return
    cp "$root/examples/spark/requirements.txt" "$spark/venv"
}

# fetch_jars NAME: what jars/NAME/pom.xml lists, from Maven Central.
fetch_jars() {
    local pom=$root/examples/spark/jars/$1/pom.xml
    cmp -s "$pom" "$spark/$1/pom.xml" && return
    echo "Fetching the jars of the $1 ..." >&2
    rm -rf "${spark:?}/$1"
    quietly mvn -q -B -f "$pom" dependency:copy-dependencies -DincludeScope=runtime \
        -DoutputDirectory="$spark/$1" || return
    cp "$pom" "$spark/$1"
}

# install_package PACKAGE [OPTION]...
install_package() {
    quietly "$spark/venv/bin/pip" install --no-build-isolation --no-deps --force-reinstall "$@"
}

build_package() {
    echo "Building the Python package, a minute the first time ..." >&2
    install_package "$root/bindings/python" -C "build-dir=$spark/package"
}
