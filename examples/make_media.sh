#!/usr/bin/env bash
# Makes the media of the example disc anew (they are committed, so nobody needs to run this).
# Everything is synthetic: moving gradients, drawn numbers, computed tones. Needs ffmpeg.
set -euo pipefail
cd "$(dirname "$0")/media"

quiet=(-hide_banner -loglevel error -y -fflags +bitexact)
pal=(-c:v mpeg2video -r 25 -g 12 -bf 2 -pix_fmt yuv420p -flags +bitexact -b:v 700k -maxrate 1500k -bufsize 1000k)

# video NAME SECONDS ASPECT COLOUR COLOUR LABEL
video() {
  ffmpeg "${quiet[@]}" -f lavfi \
    -i "gradients=s=720x576:r=25:c0=$4:c1=$5:n=2:speed=0.008:duration=$2:seed=7" \
    -vf "drawtext=text='$6':fontsize=64:fontcolor=white:x=(w-text_w)/2:y=200,drawtext=text='%{eif\:t+1\:d}':fontsize=120:fontcolor=white:x=(w-text_w)/2:y=300,setsar=1" \
    "${pal[@]}" -aspect "$3" -f mpeg2video "$1.m2v"
}

# tones NAME SECONDS EXPRESSION
tones() {
  ffmpeg "${quiet[@]}" -f lavfi -i "aevalsrc='$3|$3':s=48000:d=$2" -c:a ac3 -b:a 96k -flags +bitexact -f ac3 "$1.ac3"
}

video menu 5 4:3 0x203060 0x4060a0 'Menu'
video first 14 4:3 0x602020 0xa06030 'First title'
video second 8 4:3 0x205030 0x50a060 'Second title'
tones menu 5 '0.1*sin(2*PI*220*t)*(0.6+0.4*cos(2*PI*t))'
tones first_en 14 '0.15*sin(2*PI*(330+110*mod(floor(t),4))*t)'
tones first_de 14 '0.15*sin(2*PI*(660-110*mod(floor(t),4))*t)'
tones second 8 '0.15*sin(2*PI*440*t)*(mod(floor(t*2),2))'
ls -l
