'The functions of the parameter-variable waveforms. One a line:
'name"parameters"constants"formula"number
'a parameter: name|minimum|maximum|resolution|value, the next after another |
'x runs from 0 to 1 over the waveform, -1 to 1 is the full scale. Function 20 is brought to full scale.
PWF parameter-variable functions
VER=1.00
NUM=25
[definition]
'A carrier of Fc periods whose amplitude follows Fm periods of a sine, Depth in percent.
AM"Fc|1|200|1|20|Fm|1|20|1|2|Depth|0|100|1|80|Phase|-180|180|1|0"m=Depth/100"(1+m*sin(2*pi*Fm*x))*sin(2*pi*Fc*x+rad(Phase))/(1+m)"0
'Fc periods, deviating by Dev periods up and down, Fm times.
FM"Fc|1|200|1|20|Fm|1|20|1|2|Dev|0|50|0.1|15|Phase|-180|180|1|0""sin(2*pi*Fc*x+Dev/Fm*sin(2*pi*Fm*x)+rad(Phase))"1
'Fc periods, the phase swinging by Dev degrees, Fm times.
PM"Fc|1|200|1|20|Fm|1|20|1|2|Dev|0|720|1|360|Phase|-180|180|1|0""sin(2*pi*Fc*x+rad(Dev)*sin(2*pi*Fm*x)+rad(Phase))"2
'Fc pulses; their duty swings around Duty, Fm times; Depth is percent of the most that fits.
PWM"Fc|2|100|1|20|Fm|1|20|1|1|Depth|0|100|1|80|Duty|5|95|1|50"d=Duty/100;m=Depth/100*min(d,1-d)"frac(Fc*x)<d+m*sin(2*pi*Fm*x)?1:-1"3
'The frequency goes evenly from F0 to F1 periods over the waveform.
Linear sweep"F0|0.5|100|0.5|1|F1|0.5|200|0.5|20|Phase|-180|180|1|0""sin(2*pi*(F0*x+(F1-F0)*x*x/2)+rad(Phase))"4
'The same by equal ratios in equal times.
Logarithmic sweep"F0|0.5|100|0.5|1|F1|0.5|200|0.5|50|Phase|-180|180|1|0"k=if(F1==F0,1.000000001,F1/F0);c=F0/ln(k)"sin(2*pi*c*(k^x-1)+rad(Phase))"5
'F periods over the waveform that die away with the time constant Tau, from Delay on.
Damped sine"F|1|100|1|10|Tau|0.01|2|0.01|0.2|Delay|0|0.9|0.01|0|Phase|-180|180|1|0""x<Delay?0:exp(-(x-Delay)/Tau)*sin(2*pi*F*(x-Delay)+rad(Phase))"6
'From 1 towards Base with the time constant Tau, from Delay on.
Exponential decay"Tau|0.01|2|0.01|0.2|Delay|0|0.9|0.01|0.1|Base|-1|0|0.01|0""Base+(1-Base)*(x<Delay?0:exp(-(x-Delay)/Tau))"7
'From Base towards 1 with the time constant Tau, from Delay on.
Exponential rise"Tau|0.01|2|0.01|0.2|Delay|0|0.9|0.01|0.1|Base|-1|0|0.01|0""Base+(1-Base)*(x<Delay?0:1-exp(-(x-Delay)/Tau))"8
'Double exponential with peak 1: time constants Front and Tail, from Delay on.
Surge"Front|0.001|0.04|0.001|0.01|Tail|0.05|1|0.01|0.2|Delay|0|0.8|0.01|0.1|Base|-1|0|0.01|0"tp=ln(Tail/Front)*Front*Tail/(Tail-Front);pk=exp(-tp/Tail)-exp(-tp/Front)"Base+(1-Base)*(x<Delay?0:(exp(-(x-Delay)/Tail)-exp(-(x-Delay)/Front))/pk)"9
'The positive halves of a sine.
Half-wave rectified sine"Cycles|1|100|1|4|Phase|-180|180|1|0|Base|-1|0|0.01|0""Base+(1-Base)*max(0,sin(2*pi*Cycles*x+rad(Phase)))"10
'Both halves of a sine, upwards.
Full-wave rectified sine"Cycles|1|100|1|4|Phase|-180|180|1|0|Base|-1|0|0.01|0""Base+(1-Base)*abs(sin(2*pi*Cycles*x+rad(Phase)))"11
'Each half wave is cut by Cut degrees: at its start, or at its end with Trailing 1.
Phase-cut mains"Cycles|1|50|1|2|Cut|0|170|1|90|Trailing|0|1|1|0""sin(2*pi*Cycles*x)*(Trailing==0?180*frac(2*Cycles*x)>=Cut:180*frac(2*Cycles*x)<180-Cut)"12
'H2 to H7 are percent of the fundamental; the sum is scaled to fit.
Sine with harmonics"Cycles|1|50|1|2|H2|-100|100|1|0|H3|-100|100|1|30|H5|-100|100|1|15|H7|-100|100|1|0"s=1+(abs(H2)+abs(H3)+abs(H5)+abs(H7))/100"(sin(2*pi*Cycles*x)+(H2*sin(4*pi*Cycles*x)+H3*sin(6*pi*Cycles*x)+H5*sin(10*pi*Cycles*x)+H7*sin(14*pi*Cycles*x))/100)/s"13
'Rise, High and Fall are percent of a period.
Trapezoid"Cycles|1|50|1|2|Rise|0|30|1|15|High|5|40|1|30|Fall|0|30|1|15|Base|-1|0|0.01|-1"r=max(Rise,0.0001);f=max(Fall,0.0001)"Base+(1-Base)*clip(min(100*frac(Cycles*x)/r,(r+High+f-100*frac(Cycles*x))/f),0,1)"14
'Steps levels, Cycles times; Shape 0 rises, 1 rises and falls, 2 falls.
Staircase"Steps|2|64|1|8|Cycles|1|20|1|1|Shape|0|2|1|0""2*min(Steps-1,floor(Steps*(Shape==0?frac(Cycles*x):Shape==1?1-abs(2*frac(Cycles*x)-1):1-frac(Cycles*x))))/(Steps-1)-1"15
'A bell at Center with the standard deviation Sigma.
Gauss"Center|0|1|0.01|0.5|Sigma|0.005|0.5|0.005|0.1|Base|-1|0|0.01|0""Base+(1-Base)*gauss(x-Center,Sigma)"16
'sin(t)/t at Center, with Lobes zeros on either side when it stands in the middle.
Sinc"Center|0|1|0.01|0.5|Lobes|1|100|1|10""sinc(2*pi*Lobes*(x-Center))"17
'A resonance at Center; Width is half of its width at half height.
Lorentz"Center|0|1|0.01|0.5|Width|0.005|0.5|0.005|0.05|Base|-1|0|0.01|0""Base+(1-Base)/(1+((x-Center)/Width)^2)"18
'F periods a waveform, switched on from Start for Length; Ramp is the percent of the length that either edge takes.
Raised cosine burst"F|1|200|1|40|Start|0|0.5|0.01|0.2|Length|0.05|0.5|0.01|0.5|Ramp|0|50|1|50"r=max(Ramp/100,0.000001)"sin(2*pi*F*(x-Start))*(0.5-0.5*cos(pi*clip(min((x-Start)/Length,1-(x-Start)/Length)/r,0,1)))"19
'Tones sines at First, First + Spacing, ...; Spread 0 sets them in phase, 100 spreads their phases for a low crest. Always full scale.
Multi-tone"First|1|100|1|10|Spacing|1|20|1|1|Tones|1|8|1|8|Spread|0|100|1|100"q=pi*Spread/100/Tones"(sin(2*pi*First*x)+(Tones>1)*sin(2*pi*(First+Spacing)*x+q)+(Tones>2)*sin(2*pi*(First+2*Spacing)*x+4*q)+(Tones>3)*sin(2*pi*(First+3*Spacing)*x+9*q)+(Tones>4)*sin(2*pi*(First+4*Spacing)*x+16*q)+(Tones>5)*sin(2*pi*(First+5*Spacing)*x+25*q)+(Tones>6)*sin(2*pi*(First+6*Spacing)*x+36*q)+(Tones>7)*sin(2*pi*(First+7*Spacing)*x+49*q))/(4*Ypk)"20
'Two sines; Share2 is the percent of the second.
Two-tone"F1|1|200|1|20|F2|1|200|1|22|Share2|0|100|1|50|Phase2|-180|180|1|0""(1-Share2/100)*sin(2*pi*F1*x)+Share2/100*sin(2*pi*F2*x+rad(Phase2))"21
'Bits that look random, others for each Seed; Rise is the percent of a bit that an edge takes.
Pseudo-random bits"Bits|8|512|1|32|Seed|1|1000|1|1|Rise|0|100|1|0|Base|-1|0|0.01|-1"r=max(Rise/100,0.000001)"Base+(1-Base)*((frac(sin(12.9898*((floor(Bits*x)+Bits-1)%Bits+1)+78.233*Seed)*43758.5453+43759)>=0.5)+((frac(sin(12.9898*(floor(Bits*x)+1)+78.233*Seed)*43758.5453+43759)>=0.5)-(frac(sin(12.9898*((floor(Bits*x)+Bits-1)%Bits+1)+78.233*Seed)*43758.5453+43759)>=0.5))*min(1,frac(Bits*x)/r))"22
'The heart's current: heights of the waves P and T, width of the main peak, lift of the stretch ST.
Heart beat"Beats|1|20|1|2|P|0|0.3|0.01|0.12|Width|0.005|0.03|0.001|0.012|T|0|0.5|0.01|0.3|ST|-0.3|0.3|0.01|0""P*gauss(frac(Beats*x)-0.2,0.025)-0.12*gauss(frac(Beats*x)-0.365,0.01)+0.95*gauss(frac(Beats*x)-0.4,Width)-0.2*gauss(frac(Beats*x)-0.435,0.012)+ST*gauss(frac(Beats*x)-0.52,0.05)+T*gauss(frac(Beats*x)-0.65,0.045)"23
'A battery line whose load is cut off: up within Rise, down with the time constant Decay; Clamp limits the pulse.
Load dump"Battery|0|0.5|0.01|0.15|Start|0.05|0.5|0.01|0.1|Rise|0.001|0.1|0.001|0.01|Decay|0.02|0.5|0.01|0.15|Clamp|0.2|1|0.01|1""Battery+(1-Battery)*min(Clamp,x<Start?0:min((x-Start)/Rise,exp(-max(0,x-Start-Rise)/Decay)))"24
