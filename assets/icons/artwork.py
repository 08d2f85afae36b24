"""The larger pictures: application icon, document icon, the hint of the empty window."""
from svgkit import *

APP = '''<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" width="256" height="256" viewBox="0 0 256 256">
<defs>
<linearGradient id="ground" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#2f5d8f"/><stop offset="1" stop-color="#142c4c"/></linearGradient>
<linearGradient id="upper" x1="0" y1="1" x2="1" y2="0"><stop offset="0" stop-color="#d9722b"/><stop offset="1" stop-color="#ffc864"/></linearGradient>
<linearGradient id="lower" x1="0" y1="0" x2="1" y2="1"><stop offset="0" stop-color="#c45a22"/><stop offset="1" stop-color="#f0a040"/></linearGradient>
<linearGradient id="shaft" x1="0" y1="0" x2="1" y2="0"><stop offset="0" stop-color="#ffffff"/><stop offset="1" stop-color="#dfe6ee"/></linearGradient>
</defs>
<path fill="url(#ground)" d="M60 0H196A60 60 0 0 1 256 60V196A60 60 0 0 1 196 256H60A60 60 0 0 1 0 196V60A60 60 0 0 1 60 0Z"/>
<g transform="translate(-24 -12) scale(1.1)">
<path fill="url(#upper)" d="M106 138C108 96 142 56 214 40C216 60 212 74 202 86L186 90L194 98C182 112 168 120 154 124L140 124L146 132C134 138 122 140 106 138Z"/>
<path fill="url(#lower)" d="M110 150C126 146 138 148 150 156L144 164L160 166C172 176 184 190 192 204L184 206L198 216C176 222 150 214 134 196C120 182 112 166 110 150Z"/>
<path fill="none" stroke="#142c4c" stroke-opacity="0.55" stroke-width="5" stroke-linecap="round" d="M112 134C130 104 160 76 196 56"/>
<path fill="none" stroke="#142c4c" stroke-opacity="0.45" stroke-width="5" stroke-linecap="round" d="M118 156C132 174 152 192 178 206"/>
<path fill="url(#shaft)" d="M66 44A13 13 0 0 1 92 44L95 146H63Z"/>
<path fill="#8fa3b8" d="M61 146H97V166H61Z"/>
<path fill="#ffc864" d="M61 166H97C99 188 92 208 70 222C73 212 70 206 66 198C61 188 60 178 61 166Z"/>
</g>
</svg>
'''

DOC = icon(s("M3 1H9L13 5V15H3Z", "M9 1V5H13") + a("M4.6 13L7 9.6L8.6 11.6L9.6 10.4L11.4 13Z") + af(dot(10.4, 8.2, .8)))

HINT_OPEN = '''<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" width="192" height="160" viewBox="0 0 192 160">
<path fill="none" stroke="#3a3a3a" stroke-opacity="0.35" stroke-width="2.5" stroke-linecap="round" stroke-linejoin="round" stroke-dasharray="2.4 4" d="M28 20H164A12 12 0 0 1 176 32V128A12 12 0 0 1 164 140H28A12 12 0 0 1 16 128V32A12 12 0 0 1 28 20Z"/>
<path fill="#3a3a3a" fill-opacity="0.08" d="M58 44H134A6 6 0 0 1 140 50V102A6 6 0 0 1 134 108H58A6 6 0 0 1 52 102V50A6 6 0 0 1 58 44Z"/>
<path fill="none" stroke="#3a3a3a" stroke-opacity="0.7" stroke-width="3" stroke-linecap="round" stroke-linejoin="round" d="M110 108H58A6 6 0 0 1 52 102V50A6 6 0 0 1 58 44H134A6 6 0 0 1 140 50V82M54 98L76 74L92 90L104 78L114 88"/>
<path fill="#3a3a3a" fill-opacity="0.7" d="M107 60A7 7 0 1 1 121 60A7 7 0 1 1 107 60Z"/>
<path fill="none" stroke="#1a73e8" stroke-width="5" stroke-linecap="round" stroke-linejoin="round" d="M134 90V122M120 110L134 124L148 110"/>
</svg>
'''
