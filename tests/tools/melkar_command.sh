#!/usr/bin/env bash
# melkar_command.sh MELKAR SAMPLES: exit codes, messages and outputs of the command, one case a line.
set -euo pipefail

melkar=$(realpath "$1")
samples=$(realpath "$2")
docs=$samples/../docs
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The cases run in a copy, so that the ring log grows there.
cp -r "$samples/"{app,app-dark,data,import,pictures.txt} "$work"
cd "$work"
printf 'head\nhead\n' >no-days.csv
echo former >kept.svg
echo mine >a.pdf.part

failures=0
kind=bar
fail() {
    echo "FAILED: $1: $2"
    failures=$((failures + 1))
}

# says WHY EXIT-CODE PATTERN ARGUMENT...: the pattern stands in what the command prints.
says() {
    local why=$1 code=$2 pattern=$3 actual=0 printed
    shift 3
    printed=$("$melkar" "$@" 2>&1) || actual=$?
    [[ $actual -eq $code ]] || fail "$why" "exit code $actual, not $code: $printed"
    grep -qE -- "$pattern" <<<"$printed" || fail "$why" "no '$pattern' in: $printed"
}

# expect WHY EXIT-CODE PATTERN ARGUMENT...: of a chart of that kind, by default the bars of a week.
expect() { says "${@:1:3}" draw "$kind" --base app/bin --section BAR_WEEK --size 900x500 "${@:4}"; }

# expect_file WHY MAGIC FILE: the file begins with these bytes.
expect_file() {
    [[ $(head -c "${#2}" "$3" | tr -d '\0') == "$2" ]] || fail "$1" "$3 doesn't begin with $2"
}

week=(--data data/bar-week.csv)
expect "pixels"                     0 '^$' "${week[@]}" -o a.png
expect "page, portable"             0 '^$' "${week[@]}" -o a.pdf
expect "page, scalable"             0 '^$' "${week[@]}" -o a.svg
expect "with outlines"              0 '^$' "${week[@]}" --svg-outlines -o o.svg
grep -q 'fill-opacity="0"> Steps this week<' o.svg || fail "with outlines" "no unseen title in o.svg"
expect "pixels, packed tighter"     0 '^$' "${week[@]}" -o a.webp
[[ $(stat -c %s a.webp) -lt $(stat -c %s a.png) ]] || fail "pixels, packed tighter" "they take more room"
expect_file "pixels" $'\x89PNG' a.png
expect_file "pixels, packed tighter" 'RIFF' a.webp
expect_file "page, portable" '%PDF' a.pdf
expect_file "page, scalable" '<?xml' a.svg
expect_file "a file with a name beside it" 'mine' a.pdf.part
expect "finer pixels"               0 '^$' "${week[@]}" --scale 1.5 -o fine.png
[[ $(head -c 24 fine.png | tail -c 8 | od -An -tu1 | xargs) == '0 0 5 70 0 0 2 238' ]] || fail "finer pixels" "not 1350 x 750"
expect "a page has no pixels"       2 'needs a picture of pixels' "${week[@]}" --scale 2 -o fine.svg
expect "units are of 96 dpi"        2 'takes no --dpi' "${week[@]}" --scale 2 --dpi 120 -o fine.png
expect "a balloon changes it"       0 '^$' "${week[@]}" --hover 480,420 -o b.png
! cmp -s a.png b.png || fail "a balloon changes it" "the pictures are equal"

expect "the record names a title"   0 'Steps this week' "${week[@]}" --record
echo '<fontconfig/>' >no-fonts.conf
FONTCONFIG_FILE=$PWD/no-fonts.conf \
expect "a machine without fonts"    0 'warning: texts are missing' "${week[@]}" -o n.png
expect "no days: the message"       0 'No records yet' --data no-days.csv --record
expect "a click on the third day"   0 '^day 2 Wed 25$' "${week[@]}" --click 373,420
expect "a click outside"            0 '^no day$' "${week[@]}" --click=-5,9999

says "no window without its program" 1 'melkar-show .*MELKAR_BUILD_GTK4' show bar --base app/bin --section BAR_WEEK "${week[@]}"
says "a window follows files"       2 'has no name' show bar --base app/bin --section BAR_WEEK --data -
expect "no data file"               1 '^melkar: 101: .*missing.csv' --data missing.csv -o kept.svg
expect_file "no data file" 'former' kept.svg
expect "no directory for a page"    1 '^melkar: .*nowhere' "${week[@]}" -o nowhere/a.svg
mkdir hidden # found before those of the system, and no libraries
touch hidden/{libwebp.so.7,libgdk_pixbuf-2.0.so.0,libcups.so.2}
# without WHY EXIT-CODE PATTERN ARGUMENT...: where the libraries are missing that are loaded when first needed.
without() { LD_LIBRARY_PATH=$work/hidden says "$@"; }
without "no codec"                  1 'a.webp: Can not access' draw bar --base app/bin --section BAR_WEEK "${week[@]}" -o a.webp
without "no picture library"        1 '^melkar: 1200: ' draw image --base app/bin --section BAR_WEEK --data a.png -o i.png
without "no print library"          1 'nothing was printed' report --base app/bin --header data/report-header.csv --data data \
    --printer ipp://localhost/printers/a
without "others need none"          0 '^$' draw bar --base app/bin --section BAR_WEEK "${week[@]}" -o a.png
expect_file "no codec" 'RIFF' a.webp
for line in 'WebP file .*a.webp. not written' 'picture file .*a.png. not read: ' 'printer .ipp:.* no print library: '; do
    grep -q "$line" app/log/graph.log || fail "a library that isn't there" "the log doesn't tell: $line"
done
[[ -z $(find . -name '*.new') ]] || fail "failed pages" "a part is left behind"

# expect_day WHY EXIT-CODE PATTERN ARGUMENT...: of a day of the weekly sample.
expect_day() { expect "${@:1:3}" --section DAY --data data/circadian-week.csv --record "${@:4}"; }

kind=day
expect_day "the first day"          0 'text "Mar 2"'
expect_day "another day"            0 'text "Mar 5"' --date 20260305
expect_day "no such day"            1 'no such day: 20260501' --date 20260501
expect_day "no weekly file"         1 '^melkar: 210: .*missing.csv' --data missing.csv
kind=bar

diff <("$melkar" keys) "$docs/profile-keys.md" || fail "the key reference" "docs/profile-keys.md isn't what melkar keys prints"

diff <("$melkar" data) "$docs/data-files.md" || fail "the data reference" "docs/data-files.md isn't what melkar data prints"

diff <("$melkar" kinds) "$docs/kinds.md" || fail "the kinds" "docs/kinds.md isn't what melkar kinds prints"

diff <("$melkar" check --rules) "$docs/checker.md" || fail "the rules" "docs/checker.md isn't what melkar check --rules prints"

# The help of each command ends with two examples, to be typed at the project's root, and these run without a complaint.
ln -s . samples
for command in $("$melkar" --help | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p'); do
    [[ $command != show ]] || continue # which waits for somebody to close its window; scripts/check-widgets runs it
    mapfile -t examples < <("$melkar" "$command" --help | sed -n '/^Examples:/,$s/^  melkar/"$melkar"/p')
    [[ ${#examples[@]} -eq 2 ]] || fail "two examples" "${#examples[@]} in the help of $command"
    for example in "${examples[@]}"; do
        complaint=$(eval "$example" 2>&1 >/dev/null) && [[ $complaint != *melkar:* ]] || fail "an example" "$example: $complaint"
    done
done

# What docs/import.md tells to type works, and its files draw without a doubt.
awk '/^## / { print "# " $0 } /^```sh/ { code = 1; next } /^```/ { code = 0 } code && sections { print } /^## / { sections = 1 }' \
    "$docs/import.md" >imports.sh
(PATH=$(dirname "$melkar"):$PATH && bash -e imports.sh) 2>imports.txt || fail "docs/import.md" "$(tail -n 3 imports.txt)"
kind=steps expect "an imported month" 0 'text "8412"' --section STEPS --data steps.csv --record
[[ $(cat line.csv) == *$'\n0,Mar 4,6950,74.503' ]] || fail "pounds of an export" "$(cat line.csv)"
kind=day expect "imported epochs" 0 'text "20880 ' --section DAY --data week.csv --record
[[ $(tail -n 1 bundle-weight.csv) == 0,74.162,* ]] || fail "imported records" "$(cat bundle-weight.csv)"
says "an import without a use"      1 'no column "x"' import csv export.csv --date x --figure steps --kind steps -o kept.svg
expect_file "an import without a use" 'former' kept.svg
says "an unknown form"              2 'unknown form: xml' import xml export.csv --kind steps -o a.csv

# completes WORD...: what the last word may become.
completes() {
    local COMP_WORDS=(melkar "$@") COMP_CWORD=$# COMPREPLY
    _melkar
    echo "${COMPREPLY[*]}"
}
source <("$melkar" completion bash)
[[ $(completes re) == report ]] || fail "a command completed" "$(completes re)"
[[ $(completes draw ci) == 'circle circle-separate' ]] || fail "a kind completed" "$(completes draw ci)"
[[ $(completes import csv a.csv --kind ci) == 'circle circle-separate' ]] || fail "a kind of an option" "$(completes import csv a.csv --kind ci)"
[[ $(completes draw bar --fo) == --format ]] || fail "an option completed" "$(completes draw bar --fo)"
[[ $(completes report --paper L) == 'Letter Legal' ]] || fail "a word completed" "$(completes report --paper L)"
[[ -z $(completes draw bar --data d) ]] || fail "a file is the shell's to complete" "$(completes draw bar --data d)"
says "another shell"                2 'bash only: fish' completion fish
grep -qF 'is ..\econf\egraph.cnf' <("$melkar" man) || fail "a manual page" "a backslash isn't kept"

says "a log"                        0 '^\[20[0-9/]+ [0-9:]+\]  CBarGraph' log app/log/graph.log
says "no log"                       1 'this is no log: data/bar-week.csv' log data/bar-week.csv
[[ -z $(timeout 20 "$melkar" log --follow app/log/graph.log 2>&1 >/dev/full) ]] || fail "a log into nothing" "a word"
timeout 20 bash -c '"$0" log --follow app/log/graph.log 2>followed.txt | head -n 1 >follow.txt' "$melkar" ||
    fail "a log into a pipe that closes" "it goes on"
[[ $(wc -l <follow.txt) -eq 1 && ! -s followed.txt ]] || fail "a log into a pipe that closes" "$(cat follow.txt followed.txt)"

says "a mistyped command is named"  2 'unknown command: drow' drow
says "the version"                  0 '^melkar [0-9]+\.[0-9]+' --version
! "$melkar" keys >/dev/full 2>full.txt || fail "keys onto a full disk" "exit code 0"
expect_file "why not" 'melkar: can' full.txt

expect "a suffix in capitals"       0 '^$' "${week[@]}" --output d.PNG
cmp -s a.png d.PNG || fail "a suffix in capitals" "another picture"
expect "printed"                    0 '^<\?xml' "${week[@]}" -o - --format SVG
# on_terminal COMMAND...: what it prints if that is a terminal.
on_terminal() { TERM=xterm script -qec "'$melkar' $*" /dev/null </dev/null; }
[[ $(on_terminal drow) == $'\e['*melkar:*$'\e[0m unknown'* ]] || fail "on a terminal" "no colour"
[[ $(NO_COLOR=1 on_terminal drow) == melkar:' unknown'* ]] || fail "NO_COLOR" "a colour"
[[ $(on_terminal draw bar --section S --data data/bar-week.csv -o - --format png) == *'nothing to read'* ]] ||
    fail "on a terminal" "a picture of bytes"
expect "from the standard input"    0 '^$' --data - -o d.png <data/bar-week.csv
cmp -s a.png d.png || fail "from the standard input" "another picture"
expect "from a pipe"                0 '^$' --data <(cat data/bar-week.csv) -o e.png
cmp -s a.png e.png || fail "from a pipe" "another picture"
expect "nothing comes"              0 'No records yet' --data - --record </dev/null
expect "doubtful input"             0 'standard-input:3:3: not a number' --data - -o e.png < <(printf 'h\nh\n0,a,x\n')
expect "printed in no format"       2 '--format' "${week[@]}" -o -
expect "why a picture isn't there"  1 'nowhere/a.png: No such file' "${week[@]}" -o nowhere/a.png

# doubts WHY CONTENTS PATTERN...: what is said of a data file of that kind; it is drawn all the same.
doubts() {
    local why=$1 pattern
    printf "$2" >doubtful.csv
    shift 2
    for pattern in "$@"; do
        expect "$why" 0 "warning: .*doubtful.csv:?$pattern" --section WEEK --data doubtful.csv -o e.png
    done
}
doubts "bars" 'head\n0,a,5\n0,b\n0,d,x\n' ':2: figures in a head row.*head.$' ':3: 2 columns' ':4:3: not a number: "x" .number.$'
doubts "a line beyond the reader's" 'h\nh\n0,a,5,%01300d\n0,b,x\n' ':3: longer than 1279 ' ':4:3: not a number'
printf 'a\nb\n0,20260302,,,,5\n' >doubtful.csv
kind=week-print && expect "a week for the screen" 1 ':3:2: not the status' --section WEEK --data doubtful.csv -o e.png
kind=circle && doubts "levels" '5\nfive\n' ':2:1: not a number' ':2: ends behind 2 rows .* takes 9'
kind=panel && doubts "no data file at all" '' ' this kind takes no data file'
kind=bar
printf 'h\nh\n0,a,5\n7,b,6\n' >hint.csv
expect "a hint is no doubt"         0 '^$' --data hint.csv --strict -o e.png
printf 'h\nh\n0,a,5\n0,b,30001\n' >doubtful.csv
expect "nothing of what is doubted" 1 '^melkar: nothing was drawn' --data doubtful.csv --strict -o kept.svg
expect_file "nothing of what is doubted" 'former' kept.svg
says "the same of a file alone"     1 '^hint.csv:4:1: hint: .*status-beyond.$' check --level hint --data bar hint.csv
says "held against a section"       1 ':4:3: warning: .*30001.*off-scale' check --data bar --profile app/conf/graph.cnf \
    --section BAR_WEEK doubtful.csv
mv app/log app/logs
expect "no folder for the log"      0 '^melkar: warning: there is no folder' "${week[@]}" -o e.png
mv app/logs app/log

printf '[A]\nTITLE_HEIGHT=56 px\n' >odd.cnf
says "a profile that is doubted"    1 '^odd.cnf:2:14: error: TITLE_HEIGHT: .* is read as 56 .number.$' check odd.cnf
says "as a list of objects"         1 '"line": 2, "column": 14, "level": "error"' check --json odd.cnf
printf '; melkar: allow missing-key\n[A]\nTITLE_HEIGHT=56\nNOTE_SHOW=true\nHORIZONTAL_LABEL_FONT=2\nGRAPH_BK_RGB=1,1,1\nFOO=\n' >odd.cnf
says "a warning is no error"        0 'warning: FOO' check --level error odd.cnf
says "the profiles of the samples"  0 '^$' check --level hint app/conf/graph.cnf "$samples"/app-*/conf/*.cnf
says "no such profile"              1 'error: can.t be read' check nowhere.cnf
says "nothing to check"             2 'name a profile' check
says "checked as no kind"           2 'unknown kind: bra' check --kind bra odd.cnf

# Mistakes as people make them: each is told of the files and of a drawing of them, which goes on if it can. Of a kind's starting profile
# and its example: what sed makes of the profile, rows of a data file in the place of the example, options of the drawing.
told() {
    local what=$1 rule=$2 kind=$3 edit=$4 rows=$5 code=0
    [[ $rule != no-page ]] || code=1
    local files=(--data "$kind" --profile starter/conf/graph.cnf --section MINE mistake.csv)
    "$melkar" keys "$kind" --profile --section MINE | sed "$edit" >starter/conf/graph.cnf
    [[ -n $rows ]] && printf '%b' "$rows" >mistake.csv || "$melkar" data "$kind" --example >mistake.csv 2>no-rows.txt || : >mistake.csv
    { "$melkar" check --kind "$kind" --section MINE starter/conf/graph.cnf || true
      "$melkar" check "${files[@]}" ${6:+$6} || true; } >checked.txt 2>&1
    grep -qF "[$rule]" checked.txt || fail "$what, checked" "no [$rule] in: $(<checked.txt)"
    expect "$what, drawn" $code "^melkar: warning: .*\[$rule\]\$" --base starter/bin --section MINE --data mistake.csv ${6:+$6} -o m.png
}
mkdir -p starter/{bin,conf,log}
while IFS='|' read -r what rule kind edit rows options; do
    told "$what" "$rule" "$kind" "$edit" "$rows" "$options"
done <<'MISTAKES'
a misspelled key|unknown-key|bar|s/^PENCOLOR_RGB/PENCOLUR_RGB/
CHARTMAX misspelled|unknown-key|bar|s/^CHARTMAX/CHARTMXA/
a key that is missing|missing-key|bar|/^BARSCOLOR/d
a colour as in web pages|color|bar|s/124,146,172/#dc7878/
a colour by its name|color|bar|s/124,146,172/red/
a colour above 255|color-range|bar|s/124,146,172/300,146,172/
thousands with a comma|number|bar|s/14000/1,800/
a number with a unit|number|bar|s/14000/14000 steps/
a top below the bottom|empty-scale|bar|$aCHARTMIN=20000
an interval of 0|interval|bar|s/INTERVAL=.*/INTERVAL=0/
an interval in words|number|bar|s/INTERVAL=.*/INTERVAL=few/
more lines than pixels|crowded-scale|bar|s/INTERVAL=.*/INTERVAL=1/
COMMON missing|missing-common|bar|s/COMMON/COMON/
COMMON twice|double-section|bar|1i[COMMON]
a key twice|double-key|bar|$aCHARTMAX=1
a colon for an equals sign|line-form|bar|s/CHARTMAX=/CHARTMAX: /
a key in the wrong section|wrong-section|bar|$aFONT=Inter
a key of another kind|other-kind|bar|$aNOTE_SHOW=true
a key behind a switch|closed-key|pie|/^NOTE_SHOW/d
1 for the word true|true-word|plot|s/SCALE_L=true/SCALE_L=1/
a word for a number that switches|switch|bar|$aIS_PRINTTARGET=yes
half a point|point|plot|s/=104,88/=104/
a format of no figure|format|plot|s/%.0f/%d/
a box inside out|box-inside-out|plot|s/=40,84/=900,84/
boxes that overlap|box-overlap|pie|s/=600,180/=300,180/
a face that isn't installed|face|bar|1aFONT=No Such Face
a pale text|text-contrast|plot|s/38,50,66/170,180,190/
pale bars|mark-contrast|bar|s/124,146,172/230,230,230/
red beside green|color-blind|pie|s/136,180,173/255,190,190/
alike in grey|grey|circle|s/26,100,104/140,110,30/
a decimal comma|decimal-comma|bar||h\nh\n0,a,128,5\n
n/a for a figure|number|bar||h\nh\n0,a,n/a\n
too few columns|columns|bar||h\nh\n0,a\n
no head rows|head|bar||0,a,1\n0,b,2\n0,c,3\n
values off the scale|off-scale|bar||h\nh\n0,a,99999\n
a fourth value without a colour|no-color|pie||1\n2\n3\n4\n
a day that never was|date|activity||h\n\n\n0,20260230,20260231,,,,,,,,,1\n
dates that go back|date-order|activity||h\n\n\n0,20260303,20260303,,,,,,,,,1\n0,20260302,20260302,,,,,,,,,1\n
semicolons|separator|bar||h\nh\n0;a;1\n
JSON|not-rows|bar||{"day": 1}
UTF-16|bytes|bar||h\0\n\0
a page behind the last week|no-page|week-print|||--page=9
MISTAKES
kind=bar

says "a kind that reads no keys"    2 'no kind with keys .*: bra' keys bra
mkdir -p starter/{bin,conf,log}
"$melkar" keys bar --profile --section MINE >starter/conf/graph.cnf
expect "a profile to start from"    0 'text "12000".*' "${week[@]}" --base starter/bin --section MINE --record

expect "no output"                  2 'nothing to do' "${week[@]}"
expect "unknown suffix"             2 'must end in' "${week[@]}" -o a.bmp
expect "no size"                    2 '--size' "${week[@]}" --size 900 -o a.png
expect "size of nothing"            2 '--size' "${week[@]}" --size 0x500 -o a.png
expect "size beyond a surface"      2 '--size' "${week[@]}" --size 32768x1 -o a.png
expect "point of words"             2 '--hover' "${week[@]}" --hover 1,b -o a.png
expect "balloon on a page"          2 '--hover' "${week[@]}" --hover 1,1 -o a.pdf
expect "outlines of pixels"         2 "--svg-outlines" "${week[@]}" --svg-outlines -o a.png
expect "no such section"            2 'no section: OTHER' "${week[@]}" --section OTHER -o a.png
expect "no such base"               2 'nowhere' "${week[@]}" --base nowhere -o a.png
expect "base without a profile"     2 'no profile' "${week[@]}" --base / -o a.png
expect "too many series"            2 '--series' "${week[@]}" --series 11 -o a.png

# expect_report WHY EXIT-CODE PATTERN ARGUMENT...: of the sample report.
expect_report() { says "${@:1:3}" report --base app/bin --header data/report-header.csv --data data "${@:4}"; }
expect_report "a report"            0 '^[0-9]+ pages$' --printer r.pdf
pdftotext -layout r.pdf r.txt
for word in 'Dr. Ann Weaver' '179 cm' 'Steps per day' 'Weight plan' 'kcal total' 'Page 2 / '; do
    grep -q "$word" r.txt || fail "a report" "it lacks: $word"
done
"$melkar" report --base app/bin --header data/report-header.csv --data data --printer - >p.pdf || true
expect_file "a report in a pipe" '%PDF' p.pdf
expect_report "no such printer"     1 '^melkar: nothing was printed' --printer nowhere/r.pdf
expect_report "no such paper"       2 '--paper takes one of A3' --printer r.pdf --paper A99

# told WHY EXIT-CODE PATTERN ARGUMENT...: of a week of bars.
told() { says "${@:1:3}" describe bar --base app/bin --section BAR_WEEK --data data/bar-week.csv "${@:4}"; }
told "in words"                     0 'Mon 23 to Sun 29.* 4 of 7 reach' --target 8000
told "with a table"                 0 '^Mon 23  10904$'
told "for programs"                 0 '"caption": "Mon 23"' --json
told "the table alone"              0 $'^Mon 23,10904\r$' --csv
told "one of both"                  2 '--json excludes --csv' --json --csv
says "a sheet a part"               0 '"kind": "week",' describe week --base app/bin --section WEEK --data data/circadian-week.csv --json
says "a host's series by their names" 0 'Systolic: highest 144 .* Diastolic: highest 85' describe pressure --base app/bin --section PRESSURE --data data/pressure.csv
says "no data file to tell of"      1 '101: ' describe bar --base app/bin --section BAR_WEEK --data missing.csv

# explained WHY PATTERN...: what is said of a pixel has a line of each pattern. The bar of Wed 25, 5752 steps of 14000:
# other colours have each channel 96 nearer to the other end, other figures are a quarter less.
explained() {
    local why=$1 pattern
    shift
    for pattern; do grep -qE -- "$pattern" explained.txt || fail "$why" "no '$pattern' in: $(cat explained.txt)"; done
}
of_week=(bar --base app/bin --section BAR_WEEK --data data/bar-week.csv)
"$melkar" explain "${of_week[@]}" --at 373,420 >explained.txt || fail "a pixel explained" "exit code $?"
explained "what is there" '^pixel 373,420: #7C92AC$' '^shows: Wed 25: 5752 steps$' \
    '^operation [0-9]+, CBarGraph::DrawBarChart: fill [0-9]+,[0-9]+ [0-9]+x[0-9]+ #7C92AC$' \
    '^  on operation 3, CGraph::FillCanvas: fill .* #FFFFFF$' '^  on operation 1, CGraph::FillGraph: fill 0,0 900x500 #FFFFFF$'
explained "its keys, the colour first" '^  graph.cnf:261: \[BAR_WEEK\] BARSCOLOR_RGB=124,146,172 .*; with 220,50,76: #DC324C$' \
    '^  graph.cnf:270: \[BAR_WEEK\] CHARTMAX=14000 .*; with 17500: fill '
[[ $(sed -n '/^keys:/{n;p}' explained.txt) == *BARSCOLOR_RGB* ]] || fail "the colour first" "$(cat explained.txt)"
[[ $(sed '1,/^cells:/d' explained.txt) == '  bar-week.csv:5:3: figure=5752 '*'; with 4314: fill '* ]] ||
    fail "its cell, and no other" "$(cat explained.txt)"
number=$(sed -n 's/^operation \([0-9]*\),.*/\1/p' explained.txt)
says "all operations, by number"    0 "^$number CBarGraph::DrawBarChart fill .* #7C92AC$" explain "${of_week[@]}" --operations
says "the canvas behind less steps" 0 'bar-week.csv:5:3: figure=5752 .*; with 4314: #FFFFFF, by CGraph::FillCanvas fill' explain "${of_week[@]}" --at 359,300
says "no pixel"                     2 '900,3 is no pixel' explain "${of_week[@]}" --at 900,3
says "no data file to explain"      1 '^melkar: 101: ' explain bar --base app/bin --section BAR_WEEK --data missing.csv --at 1,1

sed '/^\[BAR_WEEK\]/,/^\[/{s/^BARSCOLOR_RGB=.*/BARSCOLOR_RGB=1,2,3/;/^CHARTMIN=0/d}' app/conf/graph.cnf >b.cnf
sed 's/^FONT=/; a comment\n&/' app/conf/graph.cnf >c.cnf
differ() { says "${@:1:3}" diff app/conf/graph.cnf "${@:4}" bar --section BAR_WEEK --data data/bar-week.csv; }
differ "a colour changes the bars"  1 '^\[BAR_WEEK\] BARSCOLOR_RGB: 124,146,172 \(graph.cnf:261\) \| 1,2,3 \(b.cnf:261\)' -o d.png b.cnf
[[ $(head -c 24 d.png | tail -c 8 | od -An -tu1 | xargs) == '0 0 10 140 0 0 1 244' ]] || fail "side by side" "not 2700 x 500"
[[ $("$melkar" diff app/conf/graph.cnf b.cnf "${of_week[@]}" | grep -c '^\[') -eq 1 ]] || fail "a default is no difference" "more"
differ "a comment changes nothing"  0 '^no key differs' c.cnf
differ "no such profile"            2 'has no key of this kind' missing.cnf
differ "no picture of pixels"       2 '-o needs a picture of pixels' -o d.svg b.cnf
says "no data file to compare"      2 '^melkar: 101: ' diff b.cnf c.cnf bar --section BAR_WEEK --data missing.csv

expect "an SVG says what it is"     0 '<title>Steps this week</title>' --data data/bar-week.csv -o - --format svg
expect "an SVG to walk through"     0 '<title>Tue 24: 6462 steps</title>' --data data/bar-week.csv -o - --format svg --svg-interactive
expect "pixels aren't walked"       2 '--svg-interactive needs' --data data/bar-week.csv --svg-interactive -o a.png
line=(line --section LINE --data data/line-week.csv)
page() { says "${@:1:3}" page bar --base app/bin --section BAR_WEEK --data data/bar-week.csv "${@:4}"; }
page "a page of two charts"         0 '^$' --title 'Ann & Bo' -o two.html --and "${line[@]}" --size 600x400
[[ $(grep -c '<figure>' two.html) -eq 2 && $(grep -c 'viewBox="0 0 600 400"' two.html) -eq 1 ]] || fail "a page" "two charts"
grep -q '<h1>Ann &amp; Bo</h1>' two.html || fail "a page" "no heading"
page "printed"                      0 '<!doctype html>' -o -
page "a mistyped option"            2 'unknown argument: --sectoin' -o a.html --sectoin BAR_WEEK
page "a mistyped one behind"        2 'sectoin' -o a.html --and "${line[@]}" --sectoin LINE
page "no such section behind"       2 'no section: OTHER' -o a.html --and line --section OTHER --data data/line-week.csv
page "a chart that fails"           1 '101: ' -o kept.svg --and line --section LINE --data missing.csv
expect_file "a chart that fails" 'former' kept.svg

# A manifest of pictures. Each is what `draw` makes of the row's arguments, however many are drawn at a time.
mkdir -p other/{bin,conf,log}
sed 's/Steps this week/Elsewhere/' app/conf/graph.cnf >other/conf/graph.cnf
cp data/bar-week.csv "it's a week.csv"
cat >rows.txt <<'END'
# a comment, then a row with all sorts of quotes

bar --base app/bin --section BAR_WEEK --data "it's a week.csv" -o 1.png --size 300x200 # behind a row
bar --base other/bin --section BAR_WEEK --data it\'s' a 'week.csv -o 2.png
day --base app/bin --section DAY --data data/circadian-week.csv -o 3.svg --date 20260305
bar --base app/bin --section BAR_WEEK --data data/bar-week.csv -o 4.pdf --target "9000"
END
says "a manifest"                   0 '^4 pictures: 4 drawn, 0 finished before, 0 failed$' batch rows.txt -j 1
mkdir former && mv [1-4].{png,svg,pdf} former
says "files that are gone"          0 ' 4 drawn' batch rows.txt -j 4
expect "as from draw"               0 '^$' --base other/bin --data data/bar-week.csv -o former/alone.png
for pair in "former/1.png 1.png" "former/2.png 2.png" "former/3.svg 3.svg" "former/4.pdf 4.pdf" "former/alone.png 2.png"; do
    cmp -s $pair || fail "the same whoever draws it" "$pair differ"
done
TZ=UTC pdfinfo -isodates 4.pdf | grep -q 'CreationDate: *1970-01-01' || fail "the same whenever it is drawn" "a date of today"
says "all are finished"             0 ' 0 drawn, 4 finished' batch rows.txt

# drawn_anew WHY COUNT COMMAND: how many pictures are drawn again after the command.
drawn_anew() {
    eval "$3"
    says "$1" 0 " $2 drawn" batch rows.txt
}
drawn_anew "times aren't contents"  0 'touch app/conf/graph.cnf data/bar-week.csv'
drawn_anew "data, at the same time" 1 'touch -r "it'"'"'s a week.csv" t; sed -i s/8/9/ data/bar-week.csv; touch -r t data/bar-week.csv'
drawn_anew "a profile"              1 'sed -i s/Elsewhere/There/ other/conf/graph.cnf'
drawn_anew "formats of dates"       3 'echo ";" >>app/conf/config.cnf'
drawn_anew "a file that isn't ours" 1 'cp 2.png 1.png'
drawn_anew "a row"                  1 'sed -i s/9000/9100/ rows.txt'
drawn_anew "a state cut by a kill"  1 'truncate -s -9 rows.txt.done'
says "all anew"                     0 ' 4 drawn' batch rows.txt --again
rm rows.txt.done
says "a half of the lines"          0 '^2 pictures: 2 drawn' batch rows.txt --shard 1/2
says "the other"                    0 '^2 pictures: 2 drawn' batch rows.txt --shard 2/2
says "the whole, from the halves"   0 ' 4 finished' batch rows.txt
says "no such shard"                2 '--shard takes I/N' batch rows.txt --shard 3/2

says "what is there is right"       0 '^4 pictures: 4 as' verify rows.txt
echo >>4.pdf && rm 1.png
for missing in 'rows.txt:3: .*/1.png: is missing' 'rows.txt:6: .*/4.pdf: differs' '4 pictures: 2 as'; do
    says "what isn't"               1 "$missing" verify rows.txt -j 2
done
[[ ! -e 1.png ]] || fail "what isn't" "a picture was written"

printf 'bar --base app/bin --section BAR_WEEK --data %s -o %s\n' none.csv a1.png data/bar-week.csv nowhere/a2.png \
    doubtful.csv a3.png data/bar-week.csv a4.png >bad.txt
printf 'head\n0,a,5\n' >doubtful.csv
told=$("$melkar" batch bad.txt -j 3 2>&1 >/dev/null | tr '\n' ' ') || true
inOrder="^melkar: bad.txt:1: 101: .* melkar: bad.txt:2: can't be written: .* melkar: warning: bad.txt:3: [^ ]*doubtful.csv:2: "
[[ $told =~ $inOrder ]] || fail "told by lines" "$told"
[[ -s a4.png ]] || fail "told by lines" "those behind weren't drawn"
says "what failed is tried again"   1 ' 0 drawn, 2 finished before, 2 failed' batch bad.txt

# faulty WHY PATTERN ROW: a manifest that isn't begun.
faulty() {
    printf '%s\n' "bar --section BAR_WEEK --base app/bin --data data/bar-week.csv -o f.png" "$3" >faulty.txt
    says "$1" 2 "faulty.txt:2: .*$2" batch faulty.txt
    [[ ! -e f.png ]] || fail "$1" "a picture was drawn"
}
row='bar --section BAR_WEEK --base app/bin --data data/bar-week.csv'
faulty "no such kind"               'unknown kind: bra' "bra ${row#bar} -o g.png"
faulty "no such option"             'zoom' "$row -o g.png --zoom 2"
faulty "an open quote"              "isn't closed" "$row -o 'g.png"
faulty "two of one name"            'line 1 writes' "$row -o ./f.png"
faulty "nothing written"            'writes a picture' "$row --record"
faulty "printed"                    'writes a picture' "$row -o - --format png"
faulty "no input of its own"        'no standard input' "${row/data\/bar-week.csv/-} -o g.png"
says "a manifest through a pipe"    0 '1 drawn' batch - <<<"$row -o piped.png"
says "no manifest"                  2 "can't be read" batch none.txt

# An application of all kinds that one is made of draws each at once, and its profile is beyond doubt.
kinds=(bar line steps expenditure activity simulation day week circle circle-separate bmi himand quadrant panel plot pie text)
mkdir fresh # an empty one will do
says "a new application"            0 'melkar draw bar --base fresh/bin --section BAR --data fresh/data/bar.csv' new fresh/ "${kinds[@]}"
says "its profile"                  0 '^$' check fresh/conf/graph.cnf
for kind in "${kinds[@]}"; do
    section=${kind//-/_} data=()
    [[ ! -e fresh/data/$kind.csv ]] || data=(--data "fresh/data/$kind.csv")
    expect "a new $kind"            0 '^$' --base fresh/bin --section "${section^^}" "${data[@]}" -o "fresh/$kind.png"
    grep -qF "{\"$kind\", \"${section^^}\"" fresh/charts.cpp || fail "a new $kind" "the program doesn't draw it"
done
kind=bar
[[ $(stat -c %a fresh) == $(stat -c %a data) ]] || fail "a new application" "its directory has another mode than ours"
says "never where something is"     2 'something already: data' new data bar
says "nor of nothing"               2 'unknown kind: bra' new fresher bar bra
says "nor of a picture"             2 'no application .*: image' new fresher image
[[ ! -e fresher ]] || fail "nor of nothing" "something was made"
says "a section a kind"             0 '^\[CIRCLE_SEPARATE\]$' keys bar circle-separate --profile
says "each has its own"             2 '--section is of one kind' keys bar circle --profile --section MINE

kind=week-print
week=(--section WEEK --data data/week-print.csv --record)
expect "a week that others follow"  0 'Mar 4' "${week[@]}" --page 0
expect "the second one"             0 'Mar 9' "${week[@]}" --page 1
expect "no such week"               1 '^melkar: -1: ' "${week[@]}" --page=-1
kind=circle
minutes=(--section CIRCLE --data data/circle.txt --record)
expect "all levels are moderate"    0 '"100.0 %"' "${minutes[@]}" --from 1 --to 9
expect "no minutes"                 1 '^melkar: 101: ' "${minutes[@]}" --data missing.txt

kind=two-scales
printf 'x,y,size,colour,connect,scale\n0,68,10,#0000FF,0,0\n12,32,10,#FF0000,1,1\n' >scales.csv # the bottom left, and half-way up at the right
scales=(--section PANEL_SCALES --data scales.csv --record)
expect "a point by the right scale" 0 '^ellipse 652,252 5x5 fill #FF0000' "${scales[@]}"
expect "joined in its own colour"   0 '^line 104,416 652,252 #FF0000 w3' "${scales[@]}"

# Every kind draws its example by its starter, and there are no doubts about it.
for kind in $("$melkar" data --help | sed -n '/^Kinds:/,/^$/s/^  \([a-z-]*\) .*/\1/p'); do
    "$melkar" data "$kind" --example -o example.csv 2>no-rows.txt || continue # a picture, or no file at all
    [[ $kind == report ]] && continue                                      # the header of one; the sample report reads it
    "$melkar" keys "$kind" --profile --section MINE >starter/conf/graph.cnf
    expect "example of $kind" 0 '^text' --base starter/bin --section MINE --data example.csv --record
done
kind=simulation
"$melkar" data $kind --example -o plan.csv
"$melkar" keys $kind --profile --section MINE >starter/conf/graph.cnf
expect "a second file beside it"    0 'text "76" ' --base starter/bin --section MINE --data plan.csv --record

[[ $failures -eq 0 ]] && echo "all cases passed"
