#!/usr/bin/env bash
# Builds KOBWBx, installs it into ./_install and runs the example program, then the
# installed kobwb program on the example model: check, eval, contract, print, solve.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B _build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKOBWBX_BUILD_TESTS=OFF \
    -DCMAKE_INSTALL_PREFIX="$PWD/_install"
cmake --build _build/release
cmake --install _build/release >/dev/null
export LD_LIBRARY_PATH="$PWD/_install/lib${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}"
"$PWD/_install/bin/kobwbx-example" "$@"

# The Python module is installed under _install/lib/python3.X/site-packages, for the
# interpreter the build chose; the Python example runs on the same model.
python=$(sed -n 's/^Python_EXECUTABLE:[A-Z]*=//p' _build/release/CMakeCache.txt)
site=$(ls -d "$PWD"/_install/lib/python3*/site-packages 2>/dev/null | head -n 1)
if [ -n "$python" ] && [ -f "$site/kobwbx/__init__.py" ]; then
    echo
    echo "\$ PYTHONPATH=${site#$PWD/} $python python/examples/sketch.py"
    PYTHONPATH="$site" "$python" python/examples/sketch.py
fi

kobwb="$PWD/_install/bin/kobwb"
model=examples/sketch.wbm
echo
echo "\$ kobwb check $model"
"$kobwb" check "$model" && echo "(clean)"
domains=(--domain x1=0 --domain y1=0 --domain x2=80 --domain y2=0 --domain width=80 --domain side=50
         --domain 'angle=[1.04,1.05]' --domain 'x3=[100,110]' --domain 'y3=[40,45]')
echo "\$ kobwb eval $model ${domains[*]}"
"$kobwb" eval "$model" "${domains[@]}"
echo "\$ kobwb contract $model --domain x3=[0,200] --domain y3=[0,200]"
"$kobwb" contract "$model" --domain 'x3=[0,200]' --domain 'y3=[0,200]'
echo "\$ kobwb print $model"
"$kobwb" print "$model"
echo "\$ kobwb solve $model"
"$kobwb" solve "$model"
echo "\$ kobwb solve $model --all --domain x3=[0,200] --domain y3=[0,200] (and every other variable bounded)"
"$kobwb" solve "$model" --all --domain 'x1=[-1,1]' --domain 'y1=[-1,1]' --domain 'x2=[0,200]' --domain 'y2=[-1,1]' \
    --domain 'width=[0,200]' --domain 'side=[0,200]' --domain 'angle=[0,3]' --domain 'x3=[0,200]' --domain 'y3=[0,200]'
