#!/usr/bin/env bash
# Makes the media of the example disc anew (they are committed, so nobody needs to run this).
# Everything is synthetic: moving gradients, drawn words, computed tones. Needs ffmpeg.
set -euo pipefail
cd "$(dirname "$0")/media"

quiet=(-hide_banner -loglevel error -y -fflags +bitexact)
pal=(-c:v mpeg2video -r 25 -g 12 -bf 2 -pix_fmt yuv420p -flags +bitexact -b:v 700k -maxrate 1500k -bufsize 1000k)

# video NAME SECONDS ASPECT COLOUR COLOUR FILTERS
video() {
  ffmpeg "${quiet[@]}" -f lavfi \
    -i "gradients=s=720x576:r=25:c0=$4:c1=$5:n=2:speed=0.008:duration=$2:seed=7" \
    -vf "$6,setsar=1" \
    "${pal[@]}" -aspect "$3" -f mpeg2video "$1.m2v"
}

# The name of a title above its running seconds.
counted() {
  echo "drawtext=text='$1':fontsize=64:fontcolor=white:x=(w-text_w)/2:y=200,drawtext=text='%{eif\:t+1\:d}':fontsize=120:fontcolor=white:x=(w-text_w)/2:y=300"
}

# A label of a menu at a height: drawtext's arguments.
label() { echo "drawtext=text='$1':fontsize=36:fontcolor=white:x=180:y=$2"; }
menu_labels="$(label 'First title' 190),$(label 'Second title' 260),$(label 'Chapters of the first title' 330),$(label 'Slides' 400)"
page_labels="$(label 'From the start' 190),$(label 'The middle' 260),$(label 'The end' 330),$(label 'Back' 400)"

# still NAME COLOUR FILTERS: a picture of the whole screen
still() {
  ffmpeg "${quiet[@]}" -f lavfi -i "color=$2:size=720x576,drawgrid=w=72:h=72:c=white@0.12" \
    -vf "$3,format=rgb24" -frames:v 1 -pred mixed "$1.png"
}

# Marks beside the labels, which only show where a button is selected.
marks() {
  local boxes='' y
  for y in 190 260 330 400; do boxes+="drawbox=x=130:y=$((y + 4)):w=26:h=26:c=white:t=fill,"; done
  ffmpeg "${quiet[@]}" -f lavfi -i color=black:size=720x576 -vf "${boxes}format=gray" -frames:v 1 -pred mixed marks.png
}

# subtitle NAME TEXT: white letters with a grey edge; three colours and none between
subtitle() {
  ffmpeg "${quiet[@]}" -f lavfi -i color=black:size=560x60 -vf \
    "drawtext=text='$2':fontsize=38:fontcolor=white:borderw=3:bordercolor=0x808080:x=(w-text_w)/2:y=8,format=gray,lut=y='if(lt(val,64),0,if(lt(val,192),128,255))'" \
    -frames:v 1 -pred mixed "$1.png"
}

# subtitle_list NAME LETTERS: the two subtitles of a language
subtitle_list() {
  printf 'Display_Area\t(80 480 639 539)\nColor\t(3 3 2 1)\nContrast\t(15 15 15 0)\n' > "$1.sst"
  printf 'BG\t(0 0 0)\nPA\t(255 255 255)\nE1\t(128 128 128)\nE2\t(255 0 0)\nSP_NUMBER\tSTART\tEND\tFILE_NAME\n' >> "$1.sst"
  printf '1\t00:00:01:00\t00:00:04:00\t%s1.png\n2\t00:00:05:00\t00:00:09:00\t%s2.png\n' "$2" "$2" >> "$1.sst"
}

# tones NAME SECONDS EXPRESSION
tones() {
  ffmpeg "${quiet[@]}" -f lavfi -i "aevalsrc='$3|$3':s=48000:d=$2" -c:a ac3 -b:a 96k -flags +bitexact -f ac3 "$1.ac3"
}

heading() { echo "drawtext=text='$1':fontsize=56:fontcolor=white:x=(w-text_w)/2:y=80"; }

video menu 5 4:3 0x203060 0x4060a0 "$(heading 'Quorvelant'),$menu_labels"
video first 14 4:3 0x602020 0xa06030 "$(counted 'First title')"
video second 8 4:3 0x205030 0x50a060 "$(counted 'Second title')"
still chapters 0x402050 "$(heading 'Chapters'),$page_labels"
for slide in 1 2 3; do
  still "slide$slide" "0x${slide}04060" "$(counted "Slide $slide" | sed 's/,.*//')"
done
marks
subtitle en1 'A film of two colours'
subtitle en2 'and of many seconds'
subtitle de1 'Ein Film aus zwei Farben'
subtitle de2 'und vielen Sekunden'
subtitle_list first.en en
subtitle_list first.de de
tones menu 5 '0.1*sin(2*PI*220*t)*(0.6+0.4*cos(2*PI*t))'
tones first_en 14 '0.15*sin(2*PI*(330+110*mod(floor(t),4))*t)'
tones first_de 14 '0.15*sin(2*PI*(660-110*mod(floor(t),4))*t)'
tones second 8 '0.15*sin(2*PI*440*t)*(mod(floor(t*2),2))'
ls -l
