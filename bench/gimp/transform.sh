#!/bin/sh
# The projective transform of a float of 1000 x 1000 beside GIMP's, which must take at least 8 times as long.
# usage: transform.sh PATH/OF/kestrune_bench
set -eu
bench=${1:?usage: transform.sh PATH/OF/kestrune_bench}
here=$(cd "$(dirname "$0")" && pwd)
peer=$(command -v gimp-console || command -v gimp-console-2.10 || true)
if [ -z "$peer" ]; then
    echo "gimp is not installed: nothing to compare"
    exit 0
fi
ours=$("$bench" --filter "float, transform" | sed -n 's/^projective transform.* \([0-9.]*\) ms .* ms .*/\1/p' | sed -n 1p)
theirs=$("$peer" -i -d -f --batch-interpreter=plug-in-script-fu-eval \
    -b "(begin (load \"$here/transform.scm\") (bench-transform 7))" -b "(gimp-quit 0)" 2>&1 | sed -n 's/^.*gimp \([0-9.]*\).*$/\1/p' | tail -n 1)
awk -v a="$ours" -v b="$theirs" 'BEGIN {
    if (a <= 0 || b <= 0) { print "no figure: ours \"" a "\", theirs \"" b "\""; exit 1 }
    printf "projective transform of 1000 x 1000: %.1f ms, GIMP %.1f ms, %.1f times as long (at least 8)\n", a, b, b / a
    exit b / a < 8 }'
