# The data files of the samples, from the year that samples/life.txt tells:
#   awk -v captions=DIRECTORY -v plain=DIRECTORY -f scripts/life.awk samples/life.txt
# Files with words go to `captions`, with {name} for each, as scripts/samples joins them; all others to `plain`. Chance is
# drawn from the date, so that a day is the same in every file and on every machine.

function fail(text) { print FILENAME ":" FNR ": " text >"/dev/stderr"; failed = 1; exit 1 }

# --- What life.txt says -----------------------------------------------------------------------------------------------

/^;/ || /^$/ { next }
$1 == "year" && NF == 3 { year = $2; begin = $3; next }
$1 == "person" && NF == 5 { age = $2; height = $3; resting = $4; intake = $5; next }
$1 == "mark" && NF == 4 { size[$2] = $3; colour[$2] = $4; next }
$1 == "does" && NF == 6 { level[$2] = $3; stray[$2] = $4; cadence[$2] = $5; walks[$2] = $6; next }
$1 == "day" { parts[$2] = (NF - 2) / 2; for (i = 3; i <= NF; ++i) part[$2, i - 2] = $i; check_day($2); next }
$1 == "event" { for (i = 3; i <= NF; ++i) event[$2, i - 2] = $i; next }
$1 == "week" && NF == 9 { for (m = $2; m <= 12; ++m) for (i = 1; i <= 7; ++i) usual[m, i % 7] = $(i + 2); next }
$1 == "will" && NF == 13 { for (i = 1; i <= 12; ++i) will[i] = $(i + 1); next }
$1 == "on" { kind_on[$2] = $3; status_on[$2] = $4; hand_on[$2] = $5 == "hand"; if (!($3 in parts)) fail("no such day: " $3); next }
$1 == "weight" { weighed[++weighings] = $2; scale_says[weighings] = $3; next }
{ fail("not understood: " $0) }

function check_day(kind,    i, does) {
    for (i = 2; i <= 2 * parts[kind]; i += 2) {
        does = part[kind, i]
        sub(/[?]$/, "", does)
        if (!(does in level)) fail("no such doing: " does)
    }
}

# --- Chance, dates ----------------------------------------------------------------------------------------------------

function chance() { seed = seed * 16807 % 2147483647; return seed / 2147483647 }
# Squared, so that neighbouring days have nothing in common.
function stir(number,    i) { seed = (number % 1000000 + begin * 1000003) ^ 2 % 2147483647; for (i = 0; i < 5; ++i) chance() }
function round(number) { return int(number + 0.5) }

# Days are numbered from 1, the first of January.
function date_of(day,    month) {
    for (month = 1; day > length_of[month]; ++month) day -= length_of[month]
    return sprintf("%04d%02d%02d", year, month, day)
}
function number_of(date,    month, day) {
    day = substr(date, 7) + 0
    for (month = 1; month < substr(date, 5, 2) + 0; ++month) day += length_of[month]
    return day
}
function weekday(day) { return (first_weekday + day - 1) % 7 }
function minutes(time) { return int(time / 100) * 60 + time % 100 }

# --- A day, two minutes at a time -------------------------------------------------------------------------------------

function live(day,    date, kind, i, does, last, from, to, wants) {
    date = date_of(day)
    stir(date)
    kind = kind_of(date, day)
    wants = chance() * 100 < will[substr(date, 5, 2) + 0] || date in kind_on
    for (i = 1; i <= parts[kind]; ++i) {
        does = part[kind, 2 * i]
        if (sub(/[?]$/, "", does) && !wants) does = last
        from = i == 1 ? 0 : to
        to = i == parts[kind] ? 720 : int(minutes(part[kind, 2 * i + 1]) / 2) + round(2 * chance() - 1)
        spend(day, does, from, to)
        last = does
    }
    kcal[day] = round(burnt * weight(day) / 30)
    steps[day] = round(steps[day])
    exercise[day] /= 30
    burnt = 0
    status[day] = status_on[date] + 0
    hand[day] = hand_on[date] + 0
    events[day] = ""
    for (i = 1; i <= 10; ++i) events[day] = events[day] "," event[kind, i]
    profiles[day] = profile
    profile = ""
}

function kind_of(date, day) { return date in kind_on ? kind_on[date] : usual[substr(date, 5, 2) + 0, weekday(day)] }

# Intensity wanders about its level; it doesn't jump. A walk down the corridor takes three stretches.
function spend(day, does, from, to,    i, value, pace, off, on_foot) {
    for (i = from; i < to; ++i) {
        off = 0.7 * off + 0.6 * stray[does] * (2 * chance() - 1)
        value = level[does] + off
        pace = cadence[does]
        if (on_foot == 0 && chance() * 100 < walks[does]) on_foot = 3
        if (on_foot > 0) {
            value = 1.9 + 1.2 * chance()
            pace = 62
            --on_foot
        }
        value = value < 0 ? 0 : value > 9 ? 9 : int(value * 10 + 0.5) / 10
        profile = profile "," value
        count(day, int(value + 0.5), pace * 2 * (0.8 + 0.4 * chance()))
    }
}

function count(day, at, walked) {
    steps[day] += walked
    if (at == 0) return
    at_level[day, at] += 2
    burnt += mets[at] - sitting
    if (at >= 4) exercise[day] += mets[at]
}

function weight(day,    i, from, to) {
    for (i = 2; i < weighings && number_of(weighed[i]) < day; ++i) {}
    from = number_of(weighed[i - 1]); to = number_of(weighed[i])
    return scale_says[i - 1] + (scale_says[i] - scale_says[i - 1]) * (day - from) / (to - from)
}

function at_least(day, lowest,    l, sum) { for (l = lowest; l <= 9; ++l) sum += at_level[day, l]; return sum + 0 }
function between(day, lowest, highest) { return at_least(day, lowest) - at_least(day, highest + 1) }

# --- The files --------------------------------------------------------------------------------------------------------

END {
    if (failed) exit 1
    sitting = 1.3
    split("1.8 2.3 2.9 3.6 4.3 5.2 6.1 7.1 8.3", mets, " ")
    split("31 28 31 30 31 30 31 31 30 31 30 31", length_of, " ")
    first_weekday = (year + int((year - 1) / 4) - int((year - 1) / 100) + int((year - 1) / 400)) % 7
    for (day = 1; day <= 365; ++day) live(day)

    march = on("0301"); april = on("0331"); monday = on("0323"); sunday = on("0329")
    bars("bar-empty.csv", "date-short", 1, 0)
    bars("bar-week.csv", "date-weekday", monday, sunday)
    bars("bar-month.csv", "date-short", march, april)
    bars("bar-no-data.csv", "date-weekday", on("0209"), on("0215"))
    bars("bar-excluded.csv", "date-weekday", on("0803"), on("0809"))
    bar_year("bar-year.csv")
    bar_stacked("bar-stacked.csv", on("0406"), on("0419"))
    pressure("pressure.csv", on("0316"), sunday)
    lines("line-week.csv", "date-weekday", monday, sunday)
    lines("line-month.csv", "date-short", march, april)
    steps_month("steps-month.csv", march, april)
    expenditure_month("expenditure-month.csv", march, april)
    activity_month("activity-month.csv", march, april)
    activity_month("simulation-plan.csv", march, april)
    plan("simulation-plan.csv.sim", march, april)
    activity_spans("activity-spans.csv", on("0105"), on("0222"))
    week_sheets("circadian-week.csv", on("0302"), on("0308"))
    week_sheets("week-from-wednesday.csv", on("0318"), on("0322"))
    print_sheets("week-print.csv", on("0304"), on("0322"))
    quadrant_month("quadrant-month.csv", march, april)
    circle("circle.txt", on("0303"))
    pie_minutes("pie-minutes.csv", monday, sunday)
    gauge("bmi.csv", april, body_mass_index(april))
    gauge("himand.csv", april, (body_mass_index(april) / 22 - 1) * 100)
    plot_weight("plot-weight.csv", 20)
    plot_scales("plot-scales.csv", 12)
    plot_heart("plot-heart.csv", march, april)
    report_header("report-header.csv", march, april)
}

function on(month_and_day) { return number_of(year month_and_day) }
function told(day) { return status[day] == 0 }
function told_or(day, figure) { return told(day) ? figure : "" }
function total(day) { return status[day] > 1 ? 0 : resting + kcal[day] }

function mean(of, from, to,    day, sum, days) {
    for (day = from; day <= to; ++day) if (told(day)) { sum += of[day]; ++days }
    return days ? round(sum / days) : ""
}
function most(of, from, to,    day, highest) {
    for (day = from; day <= to; ++day) if (told(day) && of[day] > highest) highest = of[day]
    return highest
}

# What the scales say in the morning: a meal more or less.
function weighs(day) { stir(date_of(day) + 7); return sprintf("%.1f", weight(day) + 0.7 * chance() - 0.35) }
function pounds(kg) { return kg * 2.20462 }
function body_mass_index(day) { return weighs(day) / (height / 100) ^ 2 }

function bars(name, form, from, to,    day) {
    file = captions "/" name
    print "{steps-of-day}" >file
    print "{status-column},{day-column},{steps}" >file
    for (day = from; day <= to; ++day)
        print status[day] ",{" form " " date_of(day) "}," (status[day] < 2 ? steps[day] : "") >file
}

function bar_year(name,    month, from) {
    file = captions "/" name
    print "{steps-of-month}" >file
    print "{status-column},{month-column},{steps}" >file
    for (month = from = 1; month <= 12; from += length_of[month++])
        print "0,{date-month " date_of(from) "}," mean(steps, from, from + length_of[month] - 1) >file
}

# Active minutes begin with the second level: the first is standing about.
function bar_stacked(name, from, to,    day) {
    file = captions "/" name
    print "{minutes-of-activity}" >file
    print "{status-column},{day-column},{light-column},{moderate-column},{vigorous-column}" >file
    for (day = from; day <= to; ++day)
        print status[day] ",{date-short " date_of(day) "}," told_or(day, between(day, 2, 3)) "," \
            told_or(day, between(day, 4, 6)) "," told_or(day, at_least(day, 7)) >file
}

# A measurement in the morning and one in the evening.
function pressure(name, from, to,    day, time) {
    file = captions "/" name
    print "{blood-pressure}" >file
    print "{status-column},{day-column},{systolic-column},{diastolic-column}" >file
    for (day = from; day <= to; ++day)
        for (time = 0; time < 2; ++time) {
            stir(date_of(day) + 31 * time)
            print status[day] ",{date-short " date_of(day) "}," told_or(day, round(118 + 26 * chance())) "," \
                told_or(day, round(72 + 20 * chance())) >file
        }
}

function lines(name, form, from, to,    day) {
    file = captions "/" name
    print "{steps-and-weight}" >file
    print "{status-column},{day-column},{steps},{weight-column}" >file
    for (day = from; day <= to; ++day)
        print status[day] ",{" form " " date_of(day) "}," (status[day] < 2 ? steps[day] : "") "," told_or(day, weighs(day)) >file
}

function steps_month(name, from, to,    day) {
    file = captions "/" name
    print "{steps-of-day}" >file
    print date_of(from) "," date_of(to) ",,,,,," (int(most(steps, from, to) / 1000) + 1) * 1000 ",," mean(steps, from, to) >file
    for (day = from; day <= to; ++day)
        print status[day] ",{date-short " date_of(day) "},,," told_or(day, steps[day]) >file
}

function expenditure_month(name, from, to,    day) {
    file = captions "/" name
    print "{expenditure}" >file
    print date_of(from) "," date_of(to) "," intake ",,3000,0" >file
    for (day = from; day <= to; ++day)
        print status[day] ",{date-short " date_of(day) "}," told_or(day, total(day)) "," told_or(day, resting) >file
}

function activity_head(from, to) {
    print "activity" >file
    print date_of(from) "," date_of(to) >file
    print ",," mean(kcal, from, to) >file
}

function activity_month(name, from, to,    day) {
    file = plain "/" name
    activity_head(from, to)
    for (day = from; day <= to; ++day)
        print status[day] "," date_of(day) "," date_of(day) ",,,,,,,400,," told_or(day, kcal[day]) >file
}

function activity_spans(name, from, to,    day, goals, week) {
    file = plain "/" name
    split("280 280 325 325 345 345 355", goals, " ")
    activity_head(from, to)
    for (day = from; day <= to; day += 7)
        print (status[day] ? 2 : 0) "," date_of(day) "," date_of(day + 6) ",,,,,,," goals[++week] ",," mean(kcal, day, day + 6) >file
}

# Whole pounds, since that is what a plan shows; it begins on the third day.
function plan(name, from, to,    day, first, goal) {
    file = plain "/" name
    first = from + 2
    print "plan" >file
    print date_of(first) "," round(pounds(weight(from))) ",," round(pounds(weight(to))) >file
    for (day = from; day <= to; ++day) {
        goal = pounds(weight(first)) - (day < first ? 0 : (day - first) * 0.19)
        print date_of(day) "," told_or(day, round(pounds(weighs(day)))) "," sprintf("%.1f", goal) >file
    }
}

function times_15(day,    l, text) { for (l = 1; l <= 9; ++l) text = text "," at_level[day, l] * 15; return text }
function commas(many,    text) { while (many-- > 0) text = text ","; return text }
function told_exercise(day) { return status[day] > 1 ? "-1" : sprintf("%.1f", exercise[day]) }

function week_sheets(name, from, to,    day) {
    file = plain "/" name
    print "day sheets" >file
    print date_of(from) "," >file
    print "status,date" >file
    for (day = from; day <= to; ++day)
        print status[day] "," date_of(day) commas(4) steps[day] commas(3) at_least(day, 4) * 15 commas(3) kcal[day] "," total(day) \
            commas(2) times_15(day) commas(30) events[day] profiles[day] "," hand[day] "," told_exercise(day) >file
}

# An empty line ends each week.
function print_sheets(name, from, to,    day, l, row) {
    file = plain "/" name
    print "weekly sheets" >file
    print date_of(from) ",,,4.0,6.0" >file
    for (day = from; day <= to; ++day) {
        row = date_of(day) "," status[day] "," steps[day] "," kcal[day] "," total(day)
        for (l = 1; l <= 9; ++l) row = row "," at_level[day, l] + 0
        print row events[day] profiles[day] "," hand[day] commas(41) told_exercise(day) >file
        if (weekday(day) == 0) print "" >file
    }
}

function quadrant_month(name, from, to,    day, brisk) {
    file = plain "/" name
    for (day = from; day <= to; ++day) brisk[day] = at_least(day, 4)
    print date_of(from) "," date_of(to) ",,,,,,8000,40,brisk,4,,,,,1" >file
    print commas(21) >file
    print "," mean(steps, from, to) ",,," mean(brisk, from, to) >file
    for (day = from; day <= to; ++day)
        print status[day] "," date_of(day) ",,40,," told_or(day, steps[day]) ",,,,8000,," told_or(day, kcal[day]) ",,," \
            (status[day] > 1 ? ",-1,-1,-1,-1,-1,-1,-1,-1,-1" : times_15(day)) ",,," >file
}

function circle(name, day,    l) {
    file = plain "/" name
    for (l = 1; l <= 9; ++l) print at_level[day, l] + 0 >file
}

function pie_minutes(name, from, to,    day, light, moderate, vigorous) {
    file = plain "/" name
    for (day = from; day <= to; ++day) {
        light += between(day, 2, 3)
        moderate += between(day, 4, 6)
        vigorous += at_least(day, 7)
    }
    print light "\n" moderate "\n" vigorous >file
}

function gauge(name, day, figure) {
    file = plain "/" name
    print date_of(day) >file
    printf "%.1f\n", figure >file
}

# --- Points of panels: x, y, size, colour, whether joined to the one before -------------------------------------------

function plot_head(name) {
    file = plain "/" name
    print "x,y,size,colour,connect" >file
}
function dot(x, y, mark, joined) { print x "," sprintf("%.1f", y) "," size[mark] "," colour[mark] "," joined scale >file }

function weigh_week(week,    day, sum, days) {
    for (day = week * 7 + 1; day <= week * 7 + 7; ++day) if (told(day)) { sum += weighs(day); ++days }
    return days ? sum / days : 0
}

function weights(weeks,    week, joined) {
    for (week = 0; week <= weeks; ++week) {
        if (weigh_week(week)) dot(week, weigh_week(week), "weight", joined + 0)
        joined = weigh_week(week) > 0
    }
}
function goals(weeks,    week) { for (week = 0; week <= weeks; week += 0.5) dot(week, 78.6 - week * 0.33, "goal", 0) }

function plot_weight(name, weeks) {
    plot_head(name)
    goals(weeks)
    weights(weeks)
}

# A field more: the scale, 1 for the right one.
function plot_scales(name, weeks,    week) {
    file = plain "/" name
    print "x,y,size,colour,connect,scale" >file
    scale = ",0"
    goals(weeks)
    weights(weeks)
    scale = ",1"
    for (week = 0; week <= weeks; ++week) {
        stir(week + 3)
        dot(week, 31.6 - week * 0.19 + 0.5 * chance(), "fat", week > 0)
    }
    scale = ""
}

function plot_heart(name, from, to,    day, ill) {
    plot_head(name)
    for (day = from; day <= to; ++day) {
        if (status[day] > 1) continue
        ill = kind_of(date_of(day), day) == "bed" ? 7 : 0
        stir(date_of(day) + 11)
        dot(day - from + 1, 49 + 6 * chance() + ill, "night", 0)
        dot(day - from + 1, 61 + 12 * chance() + ill, "day", 0)
    }
}

function report_header(name, from, to,    day, days) {
    file = captions "/" name
    for (day = from; day <= to; ++day) days += told(day)
    print "{person}" >file
    print "{person-remark}" >file
    print age ",{person-sex}," height " {cm}," weighs(to) " {kg}," sprintf("%.1f", body_mass_index(to)) >file
    print "{date-full " date_of(from) "},{date-full " date_of(to) "}," days ",,,,1" >file
    print "8000,2100,30,3,6" >file
    print "{nothing-excluded}" >file
    print mean(kcal, from, to) "," resting + mean(kcal, from, to) "," mean(steps, from, to) >file
    print most(kcal, from, to) "," resting + most(kcal, from, to) "," most(steps, from, to) >file
    print "" >file
    print "{person-site}" >file
}
