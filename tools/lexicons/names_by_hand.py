"""Romanized names of persons that the open sources lack, from general knowledge."""

SURNAMES = {
    "mainland China (pinyin)": """
ai an ao bai ban bao bei bi bian bo bu cai cao cen chai chan chang chao che chen cheng chi chong chu cong cui dai dan dang deng di diao
ding dong dou du duan fan fang fei feng fu gai gan gao ge geng gong gou gu guan guang gui guo hai han hang hao he heng hong hou hu hua
huai huan huang hui huo ji jia jian jiang jiao jie jin jing ju kang ke kong kou kuang lai lan lang lao lei leng li lian liang liao lin
ling liu long lou lu luan luo lv lyu ma mai man mao mei men meng mi miao min ming mo mou mu na nan ni nian nie ning niu ou ouyang pan
pang pei peng pi piao ping pu qi qian qiang qiao qin qiu qu quan que ran rao ren rong ruan rui sang sha shan shang shangguan shao shen
sheng shi shu shui si sima situ song su sui sun tai tan tang tao teng tian tong tu wan wang wei wen weng wu xi xia xian xiang xiao xie
xin xing xiong xu xuan xue xun yan yang yao ye yi yin ying yong you yu yuan yue yun zang zeng zha zhai zhan zhang zhao zhen zheng zhi
zhong zhou zhu zhuang zhuge zhuo zi zong zou zu zuo dongfang huangfu linghu murong shentu xiahou yuwen zhangsun gongsun duanmu""",
    "Taiwan (Wade-Giles)": """
chang ch'en chen cheng chi chia chiang chien ch'ien chin ch'in chiu ch'iu chou chu ch'u chuang chung fang feng fu han ho hou hsi hsia
hsiang hsiao hsieh hsin hsing hsiung hsu hsueh hu huang hung jao jen juan jung kan kang kao keng ko kou ku kuan kung kuo lai lan lee
lei li liang liao lien lin ling liu lo lu lung ma mao mei meng mo nieh o'yang ouyang pai pan pao pei peng p'eng shao shen shih shu
su sun sung szu tai tan tang t'ang tao teng tien ting tsai ts'ai tsao ts'ao tsang tsen tseng tso tsou tsui tu tuan tung wan wang wei
wen weng wu yang yao yeh yen yin ying you yu yuan yueh yun""",
    "Hong Kong, Macao, overseas": """
au aw bong chan chau cheong cheuk cheung chiang chiu cho choi choy chow choong chong chook chu chua chui chun chung eu fok fong foo fu
fung gan goh gan hau heng ho hon hong hui hung ip kam kan kar kei keung khoo khaw kho ki kiu ko kok kong koo kot ku kuok kwan kwek kwok
kwong lai lam lao lau law lee leong leung li lian liang liao lim ling liu lo loh loi loke look low lou lu lui luk lum lun lung ma mak
man mau mok moy mui mung ng ngai ngan ngo ong ooi or pang pak pau phua poon pun quah quek sam sau seah sek seto shek shiu shum sin sit
sito siu so soh soo soon suen suk sum sun sung sze szeto tai tam tan tang tay teh teng teo teoh thong ting to tong toh tsang tse tseng
tso tsoi tsui tsung tuen tung ung wan wee wong woo wu yam yan yap yau yee yeo yeoh yeow yeung yick yim yin ying yip yiu yong you yu yue
yuen yung zee auyeung au-yeung sheung shing""",
    "Korea": """
ahn an bae baek bae bahk ban bang bong bu byeon byun cha chae chang cheon cheong chin cho choe choi chon chong chu chun chung do eom eun
gang gil go gong gu gwak gwon ha hahm ham han heo ho hong huh hur hwang hyun im in jang jeon jeong ji jin jo joo ju jun jung kang kil
kim ko koh kong koo ku kwak kwon lee lim ma maeng min moon mun myung na nah nam namgung noh no oh ok paik pak park pyo pyun rhee ri ryoo
ryu sa seo seok seol seong shim shin sim sin so sohn son song suh suk sung tak uhm um wang wi woo yang yeo yeom yeon yi yim yoo yoon you
yu yuk yum yun""",
    "Japan": """
abe adachi aida aikawa akagi akamatsu akiyama amano anzai ando aoki aoyama arai arakawa araki arima asada asai asano azuma baba chiba
chida doi eguchi endo enomoto ezaki fujii fujikawa fujimoto fujimura fujioka fujisawa fujita fujiwara fukada fukuda fukui fukumoto
fukushima funaki furukawa furuta goto hagiwara hamada hamaguchi hamamoto hanada handa hara harada hasegawa hashimoto hatakeyama hattori
hayashi hayakawa hayashida higashi higuchi hino hirai hirano hirata hirose hisamatsu honda honma hori horie horiuchi hoshino hosokawa
ichikawa igarashi iida iijima ikeda ikegami imai imamura inaba inagaki inoue ino ishibashi ishida ishiguro ishihara ishii ishikawa
ishimoto ishizuka isobe ito itoh iwai iwamoto iwasaki iwata izumi kakuda kamata kamei kamiya kanai kanda kaneda kaneko kaneshiro kasai
kataoka kato katayama katsura kawabata kawada kawaguchi kawahara kawai kawakami kawamoto kawamura kawano kawasaki kawashima kida kikuchi
kimura kinoshita kishi kishimoto kitagawa kitajima kitamura kitano kobayashi kobori koga koike koizumi kojima komatsu komiya komori kondo
konishi konno koyama kubo kubota kudo kumagai kuno kurata kuroda kurokawa kurosawa kusakabe maeda maekawa maki makino maruyama masuda
masuko matsubara matsuda matsui matsumoto matsumura matsunaga matsuo matsuoka matsushima matsushita matsuura matsuyama matsuzaki mikami
minami minamoto miura miyagawa miyagi miyahara miyake miyamoto miyata miyazaki miyazawa mizuno mizutani mochizuki mori morikawa morimoto
morino morioka morishita morita moriyama motoyama murai murakami muramatsu muranaka murata muto nagai nagano nagaoka nagashima nagata
naito nakada nakagawa nakahara nakai nakajima nakama nakamoto nakamura nakane nakanishi nakano nakao nakashima nakata nakatani nakayama
nakazawa narita nishi nishida nishihara nishii nishikawa nishimura nishino nishioka nishiyama noda noguchi nomura nozaki nozawa oba ochi
ochiai oda ogasawara ogata ogawa oguchi ogura ohashi ohno ohta ohtani oikawa oishi oka okabe okada okamoto okamura okano okawa okazaki
okimoto okubo okuda okumura okuno okuyama omori omura onishi ono onodera osaki oshima ota otani otsuka oyama ozaki ozawa saeki saito
sakaguchi sakai sakamoto sakata sakuma sakurai sano sasaki sasamoto sato satoh sawada sawai seki sekiguchi shibata shibuya shimada
shimizu shimomura shimura shinohara shiraishi shirai shirakawa shoji soga sone sonoda suda sueyoshi suga sugai sugawara sugimoto sugita
sugiura sugiyama sumida suzuki tabata tachibana tada taguchi tahara taira tajima takada takagi takahara takahashi takahata takai
takamatsu takano takaoka takashima takata takayama takeda takei takemoto takemura takenaka takeuchi takizawa tamaki tamura tanabe tanaka
tani taniguchi tanikawa tanimoto tashiro terada teramoto tokuda tokunaga tominaga tomita toyoda tsubota tsuchida tsuchiya tsuda tsuji
tsukada tsukamoto tsunoda uchida uchiyama ueda uehara uematsu uemura ueno ueyama umeda umehara umemoto usui wada wakabayashi watanabe
watabe yabe yabuki yagi yamada yamagata yamaguchi yamaji yamakawa yamamoto yamamura yamanaka yamane yamaoka yamasaki yamashita yamauchi
yamazaki yanagi yanagisawa yano yasuda yasui yokota yokoyama yonemura yoshida yoshihara yoshikawa yoshimoto yoshimura yoshino yoshioka
yoshizawa yuasa""",
    "Vietnam": """
nguyen tran le pham hoang huynh phan vu vo dang bui do ho ngo duong ly dinh truong lam doan trinh mai dao to cao thai quach chau luong
vuong trieu ta phung kieu khuat quan tang luu diep giang la mac nghiem ninh thach thieu tong tu ung vi""",
    "South Asia": """
agarwal aggarwal agrawal ahluwalia ahmed akhtar ali ambani anand ansari apte arora asthana awasthi azad babu bachchan badal bajaj bajwa
bakshi balakrishnan balasubramanian banerjee banik bansal barua basu bedi bhalla bhandari bhardwaj bhargava bhasin bhat bhatia bhatnagar
bhatt bhattacharya bhattacharyya bhushan biswas bose burman chadha chakrabarti chakraborty chandra chandrasekhar chatterjee chaturvedi
chaudhary chaudhuri chauhan chawla chettiar chopra choudhary choudhury chowdhury dalal dalmia damani das dasgupta datta dave deol
desai deshmukh deshpande dewan dey dhar dhawan dhillon dixit doshi dube dubey dutt dutta dwivedi gadkari gandhi ganesan ganguly garg
ghosh gill godbole goel gokhale gopal gopalakrishnan goswami gowda goyal grewal grover guha gulati gupta handa haq hegde hussain ibrahim
iqbal islam iyengar iyer jadhav jain jaiswal jayaraman jha jindal joshi kadam kakkar kale kamath kannan kapadia kapoor kapur karim kaul
kaur khan khanna khatri khurana kohli koirala krishnamurthy krishnan kulkarni kumar kumari lal limaye mahajan maharaj mahmood malhotra
malik mallya manchanda mandal mathur mazumdar mehra mehrotra mehta menon mirza mishra misra mistry mittal modi mohan mohanty mondal
mukherjee mukhopadhyay munshi murthy murty nadar nadkarni naidu nair nambiar nanda narang narasimhan narayan narayanan natarajan nath
nayak nayar negi nehru nigam nilekani oberoi ojha pai pal panda pande pandey pandit panicker pant parekh parikh pasha patel pathak patil
patnaik pawar perera phadke pillai pradhan prakash prasad premji puri purohit qureshi radhakrishnan raghavan rahman rai raj raja rajan
rajput raju ram ramachandran ramakrishnan raman ramanathan ramaswamy rana rane ranganathan rao rastogi rathore raut rawat ray reddy
rehman roy saha sahni sahu saini salvi samanta samuel sandhu sanghvi sankar santhanam sanyal sarin sarkar sastry savant sawant saxena
sehgal sen sengupta seth sethi shah shaikh shankar sharma shastri sheikh shenoy shetty shinde shukla sibal siddiqui sidhu silva singh
singhal singhania sinha sodhi solanki somani soni sood sridharan srinivasan srivastava subramaniam subramanian sundaram suri swaminathan
swamy tagore talwar tandon tata tendulkar thakkar thakur thapar tiwari trivedi tyagi uppal vaidya varghese varma vasudevan venkataraman
venkatesan verma vohra vyas wadhwa wagle walia yadav zaveri""",
    "Arab world, Iran, Turkey, Central Asia": """
abbas abboud abdallah abdelaziz abdelrahman abdi abdulaziz abdullah abdulrahman abed aboud abu ahmad ahmadi ahmed akbari al-abdullah
al-amin al-assad al-farsi al-ghamdi al-hajri al-harbi al-hashimi al-jaber al-khalifa al-maktoum al-mansour al-mutairi al-nahyan al-otaibi
al-qahtani al-rashid al-sabah al-saud al-shehri al-thani al-zahrani ali alavi amin amini amiri ansari asadi awad aziz azizi bahrami bakr
barakat basri bishara boutros boulos chehab daher darwish ebrahimi fadel fahd farah farouk farsi fathi fayed ghanem ghorbani habib haddad
hafez hakim hamad hamdan hamid hamidi hammoud hariri hasan hashemi hassan hatem heidari hosseini husain hussain hussein ibrahim issa
jaafari jabbar jaber jafari jalali jamal jassim kamal karam karami karimi kassem kazemi khalaf khalid khalifa khalil khan khoury lahoud
latif mahdi mahmoud majid makki malek malik mansour mansouri masri maleki mirza mohamed mohammadi mohammed moradi mostafa mousavi mubarak
muhammad mustafa naderi najjar nasr nasser nazari noor nouri omar osman qadir qasim rad rahimi rahman rajab ramadan rashid rezaei rostami
saad sabbagh sabri sadeghi sadr safavi said saleh salehi salem salim salman samadi sayed shaban shah shahin shamsi sharif sharifi soltani
suleiman taheri tahir talib tavakoli wahab yassin youssef yousef zadeh zaki zamani zayed ziad akhmetov aliyev bekov karimov mammadov
nazarbayev rakhimov tokayev umarov yusupov""",
    "Africa": """
abara abebe abiodun abiola acheampong achebe adebayo adeleke ademola adeniyi adeyemi adichie adjei afolabi agyeman agyemang akande akinola
akintola amadi amoah amponsah annan ansah appiah asamoah asante asare ayodele azikiwe babangida bah balogun balewa bangura banda bediako
bello boateng bonsu botha buhari buthelezi camara chanda chikwanha chukwu cisse coker coulibaly dangote danquah darko de-klerk diallo diop
diouf dlamini dogara donkor drogba dube ekwueme emeka eze ezekwesili fall fashola fofana gachagua gichuru gueye gumede gyasi habimana
haile ibe ibori igwe ike ikpeazu iweala jallow jonathan kabila kagame kalu kamau kamara kariuki kasongo keita kenyatta khama khumalo
kibaki kigen kimani kipchoge kipkemboi kiplagat kofi konate kone kouassi kruger kuti kwarteng lungu mabuza macharia madonsela mahama
maina makeba malema mandela manuel maseko mbeki mboya mensah mkhize mngadi modise mohale mokoena molefe moi moyo mphahlele mthembu mugabe
mukasa mulenga musa museveni mutua mwangi naidoo ncube ndiaye ndlovu ndong nduka ngcobo nguema njoroge nkomo nkosi nkrumah nkurunziza
nwachukwu nwankwo nwosu nyambura nyerere nyong'o nzimande obama obasanjo obi obiang ochieng odinga oduya ofori ogunleye okafor okeke
okello okocha okonkwo okoro okoye oladipo olatunji olawale oluwole omondi onyango opoku oppong osei otieno ouattara owusu phiri quarshie
radebe ramaphosa sackey sankara sarpong sesay sibanda sisulu sithole soyinka sow tambo tembo tetteh toure traore tshabalala tshisekedi
tutu twum uwimana van-wyk wambui wanjiku were yeboah zulu zuma zungu""",
    "Southeast Asia": """
abdullah aquino arroyo bautista castillo cruz dela-cruz dela-rosa delos-reyes delos-santos duterte enrile estrada macapagal magsaysay
marcos pacquiao pangilinan ramos recto reyes roxas santos villanueva villar zobel hartono kusuma lestari nugroho prabowo pratama purnomo
saputra setiawan siregar sitompul soeharto subroto suharto sukarno sukma sulistyo surya susanto suwandi tanjung utomo wibowo widodo
wijaya yudhoyono zainal zulkifli ismail mahathir mohamad razak shinawatra chaiyasit charoen jaidee phanomyong rattanakosin saetang
saelee srisai suksan thongchai vejjajiva wongsawat""",
    "Europe and America": """
abbott abernathy ackerman acosta adams adkins aguilar aguirre ainsworth albright aldridge alexander alford allison alvarado ames anders
andersen appleton archer armitage ashworth atkins atkinson attwood babcock bainbridge baldwin ballard bancroft barclay barlow barnett
barrett bartlett barton bauer baumann baxter beauchamp beaumont becker beckett bellamy benedict benson bergman bernstein birch blackburn
blackwell blackwood blair blanchard bloomberg boothroyd bosch bradbury bradford bradshaw brandt braun brennan brewster briggs broderick
bronson brooks broughton buchanan buckley bukowski burgess burke burnett burnham byrne cadwallader calloway cameron campbell cantrell
carlisle carlson carmichael carnegie carrington cartwright carvalho cassidy castellano cavanaugh chadwick chamberlain chandler chaplin
chapman churchill clayton clements coleman collingwood connolly corbett corcoran crawford cromwell cunningham dalton davenport davidson
delaney delgado dempsey desmond devereux dickens dietrich donaldson donahue donnelly dougherty douglas drummond dubois duffy duncan
dunlap edelman edgeworth eisenberg eldridge ellington ellsworth emerson englund erickson esposito fairbanks fairchild farquhar farrell
faulkner feldman ferguson fernandes ferrari fischer fitzgerald fitzpatrick flanagan fletcher forsyth foster fournier frankel fraser
friedman fuchs fullerton gallagher galloway gardiner garfield garrison gerhardt gibson gilbert gillespie girard goldberg goldman goldstein
goodwin gottlieb grantham greenberg greenwood griffith grossman gunderson gustafsson haas hadley halloran hamilton hammond hancock
hargreaves harrington harrison hartley hartmann hathaway hawthorne henderson hendricks henriksson herrmann higgins hobson hoffman hoffmann
holbrook holloway holmberg holmes hopkins horowitz houghton huber humphrey huntington hutchinson ingram isaacson ivanov ivanova jacobson
jameson jankowski jansen jefferson jenkins jensen johansson johnston kaczmarek kaiser kaplan katz kaufman keller kendrick kensington
kessler kirkland kirkpatrick klein kowalski kozlov kramer krause kristensen kuznetsov lachlan lancaster langdon langford larsen larsson
lavoie lawson leclerc lefebvre lehmann leibowitz lieberman lindberg lindqvist lindstrom livingston lockwood lombardi lundgren macallister
macdonald mackenzie mackintosh maclean macleod macmillan macpherson madsen magnusson maguire maier maldonado malone marchetti marlowe
marquez masterson mcallister mcarthur mcbride mccabe mccarthy mcclellan mcconnell mccormick mccoy mccullough mcdermott mcdonald mcdonnell
mcdowell mcfarland mcgee mcgrath mcgregor mcguire mcintosh mcintyre mckay mckee mckenna mckenzie mckinley mckinney mclaughlin mclean
mcleod mcmahon mcmillan mcnamara mcneil mcpherson mcqueen mendelsohn mercier merriweather meyers middleton mikkelsen montague montgomery
moreau morgenstern moretti morozov morrison mortensen mueller muller mulligan murdoch nakajima napier neumann newcombe nichols nicholson
nielsen nikolaev nilsson nordstrom norwood novak novikov o'brien o'callaghan o'connell o'connor o'donnell o'hara o'keefe o'leary o'malley
o'neal o'neil o'neill o'reilly o'rourke o'shea o'sullivan o'toole olsen olsson oppenheimer osborne pacheco paddington pappas parkinson
patterson paulsen pearson pedersen pemberton pendleton petersen peterson petrov pettersson pfeiffer phelps pickering popescu popov
prescott pritchard quigley radcliffe rasmussen reinhardt reynolds richardson richter riordan robertson rockefeller rodrigues romanov
rosenberg rosenthal rossi rothschild rousseau rutherford sanderson schaefer schmidt schneider schoenberg schreiber schroeder schubert
schulz schumacher schultz schwartz schwarz seligman seymour shapiro sheffield sheridan silverman silverstein simmons simpson sinclair
skinner smirnov sokolov sorensen spencer stafford standish steinberg stephenson stevenson stewart stockton strickland sullivan summerfield
sutherland svensson sweeney swenson tattersall templeton tennyson thatcher thompson thomsen thornton thorpe tillman townsend trevino
trombley truman turnbull underwood vandenberg vanderbilt vasquez vaughan vaughn volkov wadsworth wagner wainwright wakefield walcott
wallace warburton warwick waterhouse watkins weatherby webster weinberg weinstein weiss wellington wentworth westbrook wexler wheeler
whitaker whitfield whitman whitney whittaker wilkins wilkinson williamson willoughby winchester windsor winslow winston winthrop wolfe
woodruff woodward worthington yates zhukov ziegler zimmerman""",
}

GIVEN = {
    "Japan": """
aiko aika akane akari aki akihiko akihiro akiko akio akira arata asami asuka atsuko atsushi aya ayaka ayako ayame ayumi chie chieko chika
chiyo daichi daiki daisuke eiji eiko emi emiko eriko etsuko fumiko fumio genji goro hajime hana hanako haru haruka haruki haruko haruto
hayato hideaki hideki hideo hideyuki hikari hikaru hinata hiro hiroaki hiroki hiroko hiromi hiroshi hiroto hiroyuki hisashi hitomi hitoshi
honoka ichiro isamu isao itsuki jiro jun junichi junji junko juri kaede kana kanako kaori kaoru katsumi katsuo kazuhiko kazuhiro kazuki
kazuko kazumi kazuo kazuya kei keiichi keiji keiko keisuke ken kenichi kenji kenta kentaro kento kiyoshi kohei koichi koji kosuke kota
kumiko kyoko machiko madoka mai maki makiko makoto mami mamoru mana manabu mao mari mariko masa masaaki masahiko masahiro masaki masako
masami masanori masao masaru masashi masato masayuki masumi mayu mayumi megumi mei michiko midori mie mieko miho mika miki mikio minako
minoru misaki mitsuko mitsuo mitsuru miwa miyako miyu miyuki mizuki momoka momoko motoko nana nanako nanami naoki naoko naomi naoto naoya
natsuki natsumi noboru nobu nobuo nobuko nobuyuki noriko norio nozomi osamu ren rena rie riku rika riko rin rina risa ryo ryoichi ryoko
ryosuke ryota ryu ryuji sachiko saki sakura satoko satomi satoru satoshi sayaka sayuri seiichi seiji shigeo shigeru shin shinichi shinji
shinobu shiori shizuka sho shohei shoichi shoji shota shuichi shuji shun shunsuke sora sota susumu tadashi taichi taiki takahiro takaki
takako takao takashi takayuki takehiko takeo takeshi taku takumi takuya tamotsu taro tatsuo tatsuya tetsuo tetsuya tomohiro tomoko tomomi
tomoya toru toshi toshiaki toshihiko toshiko toshio toshiyuki tsubasa tsutomu tsuyoshi wakana wataru yasuhiro yasuko yasuo yasushi yoichi
yoko yosuke yoshi yoshiaki yoshie yoshihiro yoshiko yoshio yoshiyuki yu yua yui yuichi yuji yuka yukari yuki yukiko yukio yuko yumi yumiko
yuri yuriko yusuke yuta yutaka yuto yuya""",
    "South Asia": """
aarti abhijit abhinav abhishek aditi aditya ajay ajit akash akhil akshay alok aman amar amit amitabh amol amrita anand ananya aniket anil
anirudh anita anjali ankit ankita ankur anmol anuj anupam anuradha anushka aparna archana arjun arnav arun aruna arvind asha ashish ashok
ashwin atul avinash ayush balaji bhavesh bhavna chandan chetan chirag deepa deepak deepika dev devendra dhruv dinesh divya ganesh gaurav
gautam gayatri geeta girish gopal govind harish harsh harsha hemant himanshu hitesh indira ishaan ishita jagdish jatin jaya jayant jayesh
jignesh jitendra jyoti kailash kalpana kamal karan karthik kavita kiran kishore komal krishna kunal lakshmi lalit lata lokesh madhav
madhavi madhu madhuri mahesh manish manisha manjula manoj meena meera megha mihir milind mohit mukesh murali nandini naresh narendra
naveen neelam neeraj neha nidhi nikhil nilesh nirmala nisha nitin om pallavi pankaj parth pooja prabhakar pradeep prakash pranav prasad
prashant pratik praveen preeti priti priya priyanka puneet purnima rachna radha raghav rahul raj rajan rajat rajendra rajesh rajiv rakesh
ram raman ramesh rani ranjit rashmi ravi ravindra reena rekha renu rishabh ritu rohan rohit ruchi rupali sachin sagar sameer sandeep
sangeeta sanjana sanjay sanjeev santosh sarita satish saurabh savita seema shalini shankar shanti sharad shashi sheela shilpa shiv shivam
shreya shruti shubham shweta siddharth smita sneha sonal sonali sridhar srinivas subhash sudha sudhir suman sunil sunita suraj suresh
surya sushil sushma swati tanvi tarun tejas uday uma umesh usha vaibhav vandana varsha varun vasant venkat venkatesh vibha vidya vijay
vikas vikram vinay vineet vinod vipul vishal vishnu vivek yash yogesh""",
    "Arab world, Iran, Turkey": """
abbas abdel abdelaziz abdul abdulaziz abdullah abdulrahman adel adnan ahmad ahmed aisha akram ali alireza amal amani amin amina amir amira
amr anas anwar arash asma ashraf ayman aziz bader badr bahram basel basma bassam bilal burak cem dalal darius dina ebrahim ehsan elham
emre farah farhad farid farida faris fatemeh fatima fatma faisal fawzi fayez firas fouad ghada ghassan habib hadi haitham hakan hakim
hala hamad hamid hamza hana hanan hani haroun hasan hassan hatem heba hessa hisham hossam hossein huda hussein ibrahim imad imran iman
ismail jaber jafar jamal jamila jassim javad kamal kareem karim kamran kasra khadija khaled khalid khalifa khalil laila lamia layla leila
lina lubna maher mahmoud majid malak mansour mariam marwan maryam mehdi mehmet milad mina mohamed mohammad mohammed mona mostafa muhammad
mukhtar munir murad murat musa mustafa nabil nada nader nadia naeem nahla najwa nasser nasrin nawal nizar noor noura nour omar omid orhan
osama osman parisa parviz qasim rabia rami rana rania rashid reem reza rima riyad saad saber saeed sahar said salah saleh salem salim salma
salman sameh sami samir samira sana sara selim serkan shadi shahram shaima sherif shirin siavash sohrab suleiman sultan taher tamer tariq
usman wael walid waleed yahya yasmin yasser yasin youssef yusuf zahra zaid zainab zakaria zaki zayed ziad zeynep""",
    "Africa": """
abena abimbola abiodun adaeze adebayo adeola ade adewale afia akosua akua ama amara amina aminata ayodele ayomide babajide babatunde
bongani bukola chiamaka chidi chidinma chika chike chinedu chinonso chinua chioma chukwuemeka damilola dapo ebele ebuka efua ekene emeka
eniola esi fatou femi folake folasade funke funmilayo gbenga ifeanyi ifeoma ikechukwu jabulani kagiso kehinde kelechi kgosi kofi kojo
kwabena kwadwo kwaku kwame kwasi kwesi lerato lindiwe lwazi mandla mamadou mariama moussa mpho musa nana naledi ngozi nkechi nkosana
nnamdi nomsa ntombi nthabiseng obinna ogechi olabisi olamide olanrewaju olayinka olufemi olumide olusegun oluwaseun onyeka ousmane
refilwe seun sibusiso sipho siyabonga tariro tatenda temitope tendai thabo thandi thandiwe thembi themba tinashe titilayo tolu tumelo
tunde uche uchenna wanjiru wole yaa yaw yetunde yewande zanele zodwa zola wambui njeri atieno akinyi otieno kamau mwangi wanjiku""",
    "Vietnam": """
anh bao binh chau chi cuong dat diep dung duc giang ha hai hang hanh hao hieu hoa hoai hoan hong hue hung huong huy khanh khoa kien kim
lam lan linh loan loc long mai manh minh my nam nga ngan nghia ngoc nguyet nhan nhi nhung oanh phat phong phuc phung phuong quan quang
quoc quy quyen quynh sang son tam tan thang thanh thao thi thien thinh thoa thu thuan thuy tien tin toan tra trang tri trinh trong truc
trung truong tu tuan tung tuyen tuyet van viet vinh vu vy xuan yen""",
    "Hong Kong": """
chi chun fai fung ha hang hau hei him hin ho hoi hok hong hung ka kam kar kei keung kin kit kiu king kwan kwok kwong lai lam lap lok
lun man mei ming mun nga oi pak ping pik pui sau shan shing shuk shun sik siu suet suk sum sze tak tat tim tin tsz tung wah wai wan wang
wing yan yat yee yi yik yin ying yiu yuk yuen yun""",
}

# Syllables of Chinese given names in pinyin, and of Korean ones; two together
# make most given names.
PINYIN = """
ai an ao bai bao bei bin bing bo cai can chang chao chen cheng chi chong chuan chun cong da dan de di ding dong en fan fang fei fen feng fu
gang gao ge guang gui guo hai han hang hao he heng hong hou hua huan huang hui ji jia jian jiang jiao jie jin jing jiu ju juan jun kai kang
ke kun kuan lan lei li lian liang lin ling liu long lu lun luo mao mei meng miao min ming mu na nan ni nian ning pei peng pin ping qi qian
qiang qiao qin qing qiong qiu quan rong ru rui run san sen shan shang shao shen sheng shi shou shu shuai shuang shui shun si song su tai
tang tao teng tian ting tong wan wang wei wen wu xi xia xian xiang xiao xin xing xiong xiu xu xuan xue xun ya yan yang yao ye yi yin ying
yong you yu yuan yue yun ze zhan zhao zhe zhen zheng zhi zhong zhou zhu zhuo zi zong zu zuo""".split()
KOREAN_FIRST = """
bo byung chan chang chul dae dong eun ga gi gun gyu ha hae han hee ho hye hyeon hyo hyun in ja jae ji jin jong joo joon ju jun jung kang
ki kwang kyu kyung mi min moon myung na nam sang se seo seok seon seong seung si so soo soon su sun sung tae u wan won woo ye yeon yong
yoo yoon young yu""".split()
KOREAN_LAST = """
ah bin chan chul eun gyu ha hee ho hoon hwa hwan hye hyeok hyeon hyuk hyun il in ja jae ji jin joo joon ju jun jung ki kwan kyung min mi
na nam rae ran ri seo seok seon seop sik so soo sook su suk sun sung tae uk won woo yeon yeong yi yong yoon young yul""".split()
